#pragma once

#include <memory>
#include <vector>

#include "brel/rewrite/rewriter.h"
#include "brel/settings/settings.h"
#include "tav/attr/abstract_base_info.h"

namespace brel::settings {

// Settings that the framework acts on itself when it rewrites a model; a row's key is the place here.
const std::vector<std::shared_ptr<const tav::attr::AbstractBaseInfo>>& rewriteSettings();

// What was given of them, and the defaults of the others.
rewrite::RewriteOptions rewriteOptions(const Given& given);

}  // namespace brel::settings

#pragma once

#include <cstdint>
#include <memory>

#include "brel/rewrite/beyond.h"
#include "brel/rewrite/rewriter.h"
#include "brel/user_model.h"

namespace brel::rewrite {

// Rewrites what of a model is beyond columns, linear rows and a linear objective (UserModel::isBeyondLinear). space:
// the variable space of the solver's adders. `user` must outlive the result. Raises SupportException that names the
// element for what the solver cannot take.
std::shared_ptr<const Beyond> rewriteBeyond(const UserModel& user, std::uint64_t space, RewriteOptions options);

}  // namespace brel::rewrite

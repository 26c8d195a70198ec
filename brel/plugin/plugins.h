#pragma once

#include <memory>

#include "brel/plugin/plugin.h"

// The plug-ins, each in a file of its own.
namespace brel::plugin {

std::unique_ptr<AbstractPlugin> fixedSolve();
std::unique_ptr<AbstractPlugin> multipleObjectives();
std::unique_ptr<AbstractPlugin> multipleStarts();
std::unique_ptr<AbstractPlugin> rangeRestart();
std::unique_ptr<AbstractPlugin> ranges();
std::unique_ptr<AbstractPlugin> pool();
std::unique_ptr<AbstractPlugin> statistics();
std::unique_ptr<AbstractPlugin> writeBack();
std::unique_ptr<AbstractPlugin> dumpSolutions();
std::unique_ptr<AbstractPlugin> trace();
std::unique_ptr<AbstractPlugin> stopExpression();

}  // namespace brel::plugin

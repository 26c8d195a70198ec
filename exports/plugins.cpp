#include "exports/plugins.h"

namespace exports {

brel::LinkDef pluginDefinition() {
  using brel::Plugin;
  using brel::PluginAttrib;
  brel::LinkDef definition;
  definition.enable(Plugin::dumpSolutions);
  definition.setName(PluginAttrib{0}, "dumpbcsol");
  definition.enable(Plugin::fixedSolve);
  definition.setName(PluginAttrib{1}, "solvefixed");
  definition.setName(PluginAttrib{2}, "fixoptfile");
  definition.enable(Plugin::multipleObjectives);
  definition.setName(PluginAttrib{4}, "multobj");
  definition.setName(PluginAttrib{5}, "objnabstol");
  definition.setName(PluginAttrib{6}, "objnreltol");
  definition.enable(Plugin::ranges);
  definition.enable(Plugin::multipleStarts);
  definition.setName(PluginAttrib{10}, "multimipstart");
  definition.enable(Plugin::rangeRestart);
  definition.setName(PluginAttrib{12}, "rngrestart");
  definition.enable(Plugin::pool);
  definition.enable(Plugin::statistics);
  definition.enable(Plugin::trace);
  definition.setName(PluginAttrib{17}, "miptrace");
  definition.setName(PluginAttrib{18}, "miptracenode");
  definition.setName(PluginAttrib{19}, "miptracetime");
  definition.setName(PluginAttrib{20}, "miptraceincumbent");
  definition.enable(Plugin::stopExpression);
  definition.setName(PluginAttrib{21}, "mipstopexpr");
  definition.setName(PluginAttrib{22}, "mipstopexprnodestep");
  definition.setName(PluginAttrib{23}, "mipstopexprtimestep");
  definition.setName(PluginAttrib{24}, "mipstopexprsolutiontol");
  definition.setName(PluginAttrib{25}, "mipstopexprverbosity");
  definition.enable(Plugin::writeBack);  // last, so that it sees what all others have done
  return definition;
}

}  // namespace exports

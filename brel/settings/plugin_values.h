#pragma once

#include <map>
#include <string>

#include "brel/link_def.h"
#include "brel/settings/settings.h"

namespace brel::settings {

// The numbers of the attributes that plug-ins read.
struct PluginAttribute {
  static constexpr PluginAttrib dumpBase{0};
  static constexpr PluginAttrib solveFixed{1}, fixedOptions{2};
  static constexpr PluginAttrib allObjectives{4}, objectiveAbsTol{5}, objectiveRelTol{6};
  static constexpr PluginAttrib ranges{7};
  static constexpr PluginAttrib startFiles{10};
  static constexpr PluginAttrib rangeFile{12}, rangeSource{13};
  static constexpr PluginAttrib pool{14};
  static constexpr PluginAttrib statistics{16};
  static constexpr PluginAttrib trace{17}, traceNodes{18}, traceSeconds{19}, traceIncumbents{20};
  static constexpr PluginAttrib stopExpression{21}, stopNodes{22}, stopSeconds{23}, stopTolerance{24},
      stopVerbosity{25};
};

// What the attributes of a link's plug-ins are in a solve: as given, or their defaults.
class PluginValues {
 public:
  // Holds nothing of its arguments.
  PluginValues(const Table& table, const Given& given);

  // Of an attribute of that type; 0 or "" when its plug-in is not switched on.
  int whole(PluginAttrib attribute) const { return get<int>(attribute); }
  double number(PluginAttrib attribute) const { return get<double>(attribute); }
  std::string text(PluginAttrib attribute) const { return get<std::string>(attribute); }

  // What an error about the value begins with: where it was given, as far as it is known, and the option's name,
  // "run.opt, line 3: miptrace: ".
  std::string heading(PluginAttrib attribute) const;

  // For a plug-in that needs the work of another one.
  void set(PluginAttrib attribute, int value) { values_[attribute] = value; }

 private:
  template <class T>
  T get(PluginAttrib attribute) const {
    const auto found = values_.find(attribute);
    return found == values_.end() ? T{} : std::get<T>(found->second);
  }

  std::map<PluginAttrib, std::variant<int, double, std::string>> values_;
  std::map<PluginAttrib, std::string> headings_;  // of what was given
};

}  // namespace brel::settings

#pragma once

#include <array>
#include <cstddef>
#include <memory>
#include <string>

#include "tav/attr/lib/optional_item.h"

namespace grb {

// The options of the link itself: what it does around a solve. Their descriptions are intOptions() and fileOptions().
enum class IntOption {
  dofuncpieces,
  feasopt,
  feasoptmode,
  iis,
  kappa,
  kappaexact,
  mipstart,
  names,
  rerun,
  usebasis,
  varhint
};

enum class FileOption { readparams, tuning, writeparams, writeprob };

// One item per option. Copies share the items. An item takes only values that its description accepts
// (tav::CheckException otherwise), and reads as its default, or the empty text, until one is given.
class OptionSet {
 public:
  using IntItem = tav::attr::lib::OptionalItem<int>;
  using FileItem = tav::attr::lib::OptionalItem<std::string>;

  OptionSet();

  const std::shared_ptr<IntItem>& item(IntOption option) const;
  const std::shared_ptr<FileItem>& item(FileOption option) const;

  // The value in force.
  int value(IntOption option) const;
  // The file's name; empty: there is nothing to do.
  std::string file(FileOption option) const;

  // Whether a value was given; a default is not.
  bool isGiven(IntOption option) const;
  // Whether this very value was given, as most options ask before they act.
  bool isSetTo(IntOption option, int value) const;

 private:
  static constexpr std::size_t kIntCount = static_cast<std::size_t>(IntOption::varhint) + 1;
  static constexpr std::size_t kFileCount = static_cast<std::size_t>(FileOption::writeprob) + 1;

  std::array<std::shared_ptr<IntItem>, kIntCount> ints_;
  std::array<std::shared_ptr<FileItem>, kFileCount> files_;
};

}  // namespace grb

#pragma once

#include <memory>
#include <string>

#include "brel/watch/progress.h"

namespace brel::plugin {

// An expression over the numbers of a running solve: time (seconds), nodes, incumbent, bound, gap, solutions; with
// + - * / ^, comparisons, && || !, parentheses and the usual functions. Whatever is made of a number that is not known,
// or that does not exist as log(-1), is unknown, but for "unknown && false" and "unknown || true".
class Rule {
 public:
  // Raises tav::UserException that tells the place and what may stand there.
  explicit Rule(const std::string& expression);
  ~Rule();
  Rule(const Rule&) = delete;
  Rule& operator=(const Rule&) = delete;

  // Whether it is true, that is, a number other than 0. What is unknown is not true.
  bool isTrue(const watch::Progress& now);

 private:
  class Parser;
  std::unique_ptr<Parser> parser_;
};

}  // namespace brel::plugin

#include "kavo/reader/lp/relation.h"

#include <fmt/format.h>

namespace kavo::reader::lp {

namespace {

bool isPart(char c) { return c == '<' || c == '>' || c == '='; }

}  // namespace

bool isRelation(const Words& words) { return isPart(words.first()); }

Relation readRelation(Reading& reading, std::string_view expected) {
  Words& words = reading.words;
  if (!isRelation(words)) reading.failExpected(fmt::format("{}<=, = or >=", expected));
  const std::string_view word = words.word();
  const bool isTwo = word.size() > 1 && isPart(word[1]) && (word[0] == '=' || word[1] == '=');
  const char sign = isTwo && word[0] == '=' ? word[1] : word[0];
  const std::size_t length = isTwo ? 2 : 1;
  if (word.size() > length) words.cut(length);
  words.next();
  return sign == '<' ? Relation::kLess : sign == '>' ? Relation::kGreater : Relation::kEqual;
}

Relation flipped(Relation relation) {
  return relation == Relation::kLess      ? Relation::kGreater
         : relation == Relation::kGreater ? Relation::kLess
                                          : Relation::kEqual;
}

}  // namespace kavo::reader::lp

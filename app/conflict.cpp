#include "app/conflict.h"

#include <fmt/format.h>

#include <array>

namespace app {

namespace {

struct Kind {
  int kind;
  const char *element, *side, *sides;
};
constexpr std::array<Kind, 4> kKinds{{{KAVO_COLUMN, "variable", "bound", "bounds"},
                                      {KAVO_ROW, "row", "side", "sides"},
                                      {KAVO_LOGICAL, "logical constraint", "", ""},
                                      {KAVO_SET, "ordered set", "", ""}}};

const Kind& kindOf(const Conflict::Member& member) {
  for (const Kind& kind : kKinds) {
    if (kind.kind == member.kind) return kind;
  }
  return kKinds.front();
}

}  // namespace

std::optional<Conflict> conflictOf(const Session& session) {
  Conflict conflict;
  bool any = false;
  for (const Kind& kind : kKinds) {
    const unsigned char* marks = nullptr;
    std::size_t count = 0;
    if (kavo_conflict(session.model(), kind.kind, &marks, &count) != KAVO_OK) continue;
    any = true;
    for (std::size_t i = 0; i < count; ++i) {
      if (marks[i] != KAVO_CONFLICT_NONE) conflict.members.push_back({kind.kind, i, marks[i]});
    }
  }
  if (!any) return std::nullopt;
  int minimal = 0;
  conflict.minimal = kavo_conflict_is_minimal(session.model(), &minimal) == KAVO_OK && minimal != 0;
  return conflict;
}

std::string describe(const Conflict::Member& member) {
  const Kind& kind = kindOf(member);
  switch (member.mark) {
    case KAVO_CONFLICT_LOWER:
      return fmt::format("lower {} of the {}", kind.side, kind.element);
    case KAVO_CONFLICT_UPPER:
      return fmt::format("upper {} of the {}", kind.side, kind.element);
    case KAVO_CONFLICT_BOTH:
      return fmt::format("both {} of the {}", kind.sides, kind.element);
    default:
      return kind.element;
  }
}

std::string describe(const Conflict& conflict) {
  std::string parts;
  for (const Kind& kind : kKinds) {
    std::size_t count = 0;
    for (const Conflict::Member& member : conflict.members) count += member.kind == kind.kind ? 1 : 0;
    if (count == 0) continue;
    parts += fmt::format("{}{} {}{}", parts.empty() ? "" : ", ", count, kind.element, count == 1 ? "" : "s");
  }
  return fmt::format("{}; {}", parts.empty() ? "no members" : parts,
                     conflict.minimal ? "all of them are needed for it" : "perhaps not all of them are needed for it");
}

}  // namespace app

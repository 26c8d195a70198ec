#include "brel/rewrite/beyond_marks.h"

#include <algorithm>
#include <cstddef>
#include <vector>

#include "brel/rewrite/sides.h"

namespace brel::rewrite {
namespace {

using expr::NodeId;

class ElementMarks {
 public:
  ElementMarks(const UserModel& user, const Beyond& beyond, Marks& marks)
      : user_(user), beyond_(beyond), marks_(marks), isMarked_(beyond.elements.size(), false) {
    if (beyond.graph) isNeeded_.assign(beyond.graph->size(), false);
    elementOfRow_.assign(beyond.moved.size(), -1);
    for (std::size_t e = 0; e < beyond.elements.size(); ++e) {
      if (beyond.elements[e].kind == KAVO_ROW) elementOfRow_[beyond.elements[e].index] = static_cast<int>(e);
    }
  }

  void run() {
    eachHeads([this](const RowHeads& heads, const std::vector<bool>& isIn) { markRows(heads, isIn); });
    eachPart([this](const Maker& maker, bool isIn) {
      if (isIn && maker.node < 0) mark(maker.element);
    });
    markJoined();
    eachPart([this](const Maker& maker, bool isIn) {
      if (!isIn || isExplained(maker)) return;
      mark(maker.element);
      markJoined();
    });
    eachPart([this](const Maker& maker, bool isIn) {
      if (!isIn && isExplained(maker)) marks_.isExact = false;
    });
    for (std::size_t k = 0; k < beyond_.columns.size(); ++k) {
      const bool isDefined = beyond_.columns.definition[k] >= 0 && beyond_.columns.isInteger[k] == 0;
      if (!isDefined && isExplained(beyond_.columns.maker[k])) marks_.isExact = false;
    }
  }

 private:
  static std::size_t at(int number) { return static_cast<std::size_t>(number); }

  template <class Visit>
  void eachHeads(const Visit& visit) const {
    visit(beyond_.linear.heads, marks_.linear);
    visit(beyond_.quadratic.heads, marks_.quadratic);
    visit(beyond_.indicator.heads, marks_.indicator);
    visit(beyond_.nonlinear.heads, marks_.nonlinear);
  }

  // Every part that only helps, and whether it is in the conflict. Of columns those whose bounds are.
  template <class Visit>
  void eachPart(const Visit& visit) const {
    eachHeads([&](const RowHeads& heads, const std::vector<bool>& isIn) {
      for (std::size_t r = 0; r < heads.size(); ++r) {
        if (heads.user[r] == kNoUserRow) visit(heads.maker[r], isIn[r]);
      }
    });
    for (std::size_t s = 0; s < beyond_.sets.maker.size(); ++s) visit(beyond_.sets.maker[s], marks_.set[s]);
    for (std::size_t k = 0; k < beyond_.columns.size(); ++k) {
      const std::size_t column = user_.columns.count + k;
      if (marks_.lower[column] || marks_.upper[column]) visit(beyond_.columns.maker[k], true);
    }
  }

  void markRows(const RowHeads& heads, const std::vector<bool>& isIn) {
    for (std::size_t r = 0; r < heads.size(); ++r) {
      if (heads.user[r] == kNoUserRow) continue;
      const int ranged = heads.rangeColumn[r];
      const bool isSideIn = ranged >= 0 && (marks_.lower[at(ranged)] || marks_.upper[at(ranged)]);
      if (!isIn[r] && !isSideIn) continue;
      addMark(marks_.userRow[at(heads.user[r])],
              ranged >= 0 ? sideMarkOfColumn(marks_, at(ranged)) : sideMark(heads.type[r]));
      if (const int element = elementOfRow_[at(heads.user[r])]; element >= 0) need(element);
    }
  }

  void mark(int element) {
    const UserElement& what = beyond_.elements[at(element)];
    if (what.kind == KAVO_ROW) {
      const bool isEquality = Sides(user_.rows, what.index).areEqual();
      addMark(marks_.userRow[what.index], isEquality ? KAVO_CONFLICT_BOTH : KAVO_CONFLICT_MEMBER);
    }
    if (what.kind == KAVO_LOGICAL) addMark(marks_.userLogical[what.index], KAVO_CONFLICT_MEMBER);
    need(element);
  }

  // A marked element is in the conflict with everything that it needs.
  void need(int element) {
    if (isMarked_[at(element)]) return;
    isMarked_[at(element)] = true;
    std::vector<NodeId> open{beyond_.elements[at(element)].root};
    while (!open.empty()) {
      const NodeId node = open.back();
      open.pop_back();
      if (node < 0 || isNeeded_[at(node)]) continue;
      isNeeded_[at(node)] = true;
      for (const NodeId child : beyond_.graph->children(node)) open.push_back(child);
    }
  }

  // Where a column of the user's stands for a node by what an element says, whoever needs the node needs the element.
  void markJoined() {
    for (bool isDone = false; !isDone;) {
      isDone = true;
      for (const JoinedResult& joined : beyond_.joined) {
        if (!isNeeded_[at(joined.node)] || isMarked_[at(joined.element)]) continue;
        mark(joined.element);
        isDone = false;
      }
    }
  }

  bool isExplained(const Maker& maker) const {
    return maker.node < 0 ? maker.element >= 0 && isMarked_[at(maker.element)] : isNeeded_[at(maker.node)];
  }

  const UserModel& user_;
  const Beyond& beyond_;
  Marks& marks_;
  std::vector<bool> isMarked_;     // per element
  std::vector<bool> isNeeded_;     // per node: by a marked element
  std::vector<int> elementOfRow_;  // -1: sent as it stands
};

}  // namespace

void markElements(const UserModel& user, const Beyond& beyond, Marks& marks) {
  ElementMarks(user, beyond, marks).run();
}

}  // namespace brel::rewrite

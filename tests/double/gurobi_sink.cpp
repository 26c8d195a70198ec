#include "tests/double/gurobi_sink.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <string_view>
#include <type_traits>
#include <utility>
#include <vector>

#include "grb/gurobi/constants.h"
#include "tests/double/answer.h"
#include "tests/double/array_args.h"

namespace gurobi_double {
namespace {

struct Sink {
  GRBenv env;
  GRBmodel model;
  std::vector<std::byte> bytes;
  SinkTotals totals;
};

Sink& sink() {
  static Sink instance;
  return instance;
}

constexpr bool isChange(Fn function) {
  const std::string_view name = grb::fnName(function);
  return name.starts_with("GRBadd") || name.starts_with("GRBset") || name.starts_with("GRBXchg");
}

template <typename T>
void copyArray(const T* values, long length) {
  if (values == nullptr || length <= 0) return;
  Sink& target = sink();
  const std::size_t size = static_cast<std::size_t>(length) * sizeof(T);
  const auto* const first = reinterpret_cast<const std::byte*>(values);
  target.bytes.insert(target.bytes.end(), first, first + size);
  target.totals.bytes += static_cast<long>(size);
}

template <Fn kFn, std::size_t kPlace, typename T, std::size_t kCount>
void copyArgument(const T& value, const std::array<long, kCount>& lengths) {
  constexpr int kLength = lengthPlace<kFn>(static_cast<int>(kPlace));
  if constexpr (kLength >= 0) copyArray(value, lengths[static_cast<std::size_t>(kLength)]);
  if constexpr (kLength == kPerVariable) copyArray(value, sink().model.total(Kind::kVar));
  if constexpr (kLength == kPerRow) copyArray(value, sink().model.total(Kind::kRow));
}

template <typename T>
long asLength(const T& value) {
  if constexpr (std::is_integral_v<T>) return static_cast<long>(value);
  return 0;
}

int countOf(const char* name) {
  const std::string_view text(name);
  if (text == "NumVars") return sink().model.total(Kind::kVar);
  if (text == "NumConstrs") return sink().model.total(Kind::kRow);
  if (text == "NumQConstrs") return sink().model.total(Kind::kQRow);
  if (text == "NumSOS") return sink().model.total(Kind::kSos);
  if (text == "NumGenConstrs") return sink().model.total(Kind::kGen);
  return text == "Status" ? grb::status::kOptimal : 0;
}

// The result of the functions that are asked for something; the others have nothing to do.
template <Fn kFn>
struct Reply {
  template <typename... Args>
  static int run(const Args&... args) {
    constexpr Kind kKind = addedKind(kFn);
    if constexpr (kKind != Kind::kModel) queue(&sink().model, kKind);
    if constexpr (kFn == Fn::GRBaddvars || kFn == Fn::GRBaddsos) {
      const std::array<long, sizeof...(Args)> numbers{asLength(args)...};
      queue(&sink().model, kFn == Fn::GRBaddvars ? Kind::kVar : Kind::kSos, static_cast<int>(numbers[1]));
    }
    return 0;
  }
};

// Copies the values from a place of their own, as a library does that has them.
template <typename T>
int fill(T* values, int length, T value) {
  static std::vector<T> held;
  if (held.size() < static_cast<std::size_t>(length)) held.assign(static_cast<std::size_t>(length), value);
  std::copy_n(held.begin(), length, values);
  return 0;
}

// clang-format off
template <> struct Reply<Fn::GRBemptyenvinternal> {
  static int run(GRBenv** env, int, int, int) { *env = &sink().env; return 0; }
};
template <> struct Reply<Fn::GRBnewmodel> {
  template <typename... Args>
  static int run(GRBenv*, GRBmodel** model, const Args&...) {
    *model = &sink().model;
    std::fill(std::begin((*model)->queued), std::end((*model)->queued), 0);
    return 0;
  }
};
template <> struct Reply<Fn::GRBisattravailable> { static int run(GRBmodel*, const char*) { return 1; } };
template <> struct Reply<Fn::GRBgetintattr> {
  static int run(GRBmodel*, const char* name, int* value) { *value = countOf(name); return 0; }
};
template <> struct Reply<Fn::GRBgetintattrarray> {
  static int run(GRBmodel*, const char*, int, int number, int* values) { return fill(values, number, 0); }
};
template <> struct Reply<Fn::GRBgetdblattrarray> {
  static int run(GRBmodel*, const char*, int, int number, double* values) { return fill(values, number, 1.0); }
};
template <> struct Reply<Fn::GRBgetcharattrarray> {
  static int run(GRBmodel*, const char*, int, int number, char* values) { return fill(values, number, 'C'); }
};
template <> struct Reply<Fn::GRBgetintattrlist> {
  static int run(GRBmodel*, const char*, int number, int*, int* values) { return fill(values, number, 0); }
};
template <> struct Reply<Fn::GRBgetdblattrlist> {
  static int run(GRBmodel*, const char*, int number, int*, double* values) { return fill(values, number, 1.0); }
};
template <> struct Reply<Fn::GRBgetcharattrlist> {
  static int run(GRBmodel*, const char*, int number, int*, char* values) { return fill(values, number, 'C'); }
};
// clang-format on

template <Fn kFn, typename Result, typename... Args>
auto sinking(Result (*grb::Api::*)(Args...)) -> Result (*)(Args...) {
  return [](Args... args) -> Result {
    if constexpr (kFn == Fn::GRBgetenv) {
      return &sink().env;
    } else if constexpr (std::is_same_v<Result, int>) {
      if constexpr (isChange(kFn)) ++sink().totals.calls;
      const std::array<long, sizeof...(Args) + 1> lengths{asLength(args)..., 0};
      const auto copyAll = [&]<std::size_t... kPlaces>(std::index_sequence<kPlaces...>) {
        (copyArgument<kFn, kPlaces>(args, lengths), ...);
      };
      copyAll(std::index_sequence_for<Args...>{});
      return Reply<kFn>::run(args...);
    } else if constexpr (std::is_pointer_v<Result>) {
      static char nothing[1] = "";
      return nothing;
    }
  };
}

}  // namespace

std::shared_ptr<const grb::Library> sinkLibrary() {
  grb::Api table;
#define GRB_FN(result, name, params, since) table.name = sinking<Fn::name>(&grb::Api::name);
#include "grb/gurobi/functions.def"
  return grb::Library::fromTable(table, "nothing (calls are counted)");
}

SinkTotals sinkTotals() { return sink().totals; }

void resetSink() {
  Sink& target = sink();
  target.totals = {};
  target.bytes = {};
  std::fill(std::begin(target.model.queued), std::end(target.model.queued), 0);
}

}  // namespace gurobi_double

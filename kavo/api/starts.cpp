// What a solve starts from: values, a basis, points.

#include <fmt/format.h>

#include <cmath>
#include <utility>

#include "kavo/api/guard.h"
#include "kavo/model/element.h"
#include "kavo/reader/point.h"

using kavo::Error;
using kavo::api::guard;
using kavo::api::need;
using kavo::api::needIdle;

namespace {

std::string described(const kavo::Model& model, int kind, std::size_t i) {
  return kavo::describeElement(kind == KAVO_COLUMN ? "column" : "row", i, kavo::givenName(model, kind, i));
}

// One value per column or row.
std::vector<double> startValues(const kavo::Model& model, int kind, const double* values) {
  if (values == nullptr) return {};
  const std::size_t count = kavo::elementCount(model, kind);
  for (std::size_t i = 0; i < count; ++i) {
    if (!std::isinf(values[i])) continue;
    throw Error(KAVO_INVALID, fmt::format("the start value of {} is infinite", described(model, kind, i)));
  }
  return {values, values + count};
}

std::vector<int> startStatuses(const kavo::Model& model, int kind, const int* statuses) {
  const std::size_t count = kavo::elementCount(model, kind);
  if (statuses == nullptr) return std::vector<int>(count, 0);
  for (std::size_t i = 0; i < count; ++i) {
    if (statuses[i] == 0 || (statuses[i] >= KAVO_BASIS_LOWER && statuses[i] <= KAVO_SUPERBASIC)) continue;
    throw Error(KAVO_INVALID, fmt::format("{}: there is no basis status {}", described(model, kind, i), statuses[i]));
  }
  return {statuses, statuses + count};
}

}  // namespace

extern "C" {

int kavo_set_start(trpRec* model, const double* primal, const double* dual) {
  return guard([&] {
    kavo::Model& given = needIdle(model).model;
    auto primalStart = startValues(given, KAVO_COLUMN, primal);
    auto dualStart = startValues(given, KAVO_ROW, dual);
    given.primalStart = std::move(primalStart);
    given.dualStart = std::move(dualStart);
  });
}

int kavo_add_mip_start(trpRec* model, const double* values) {
  return guard([&] {
    kavo::Model& given = needIdle(model).model;
    if (given.columns.size() > 0) need(values, "the values");
    given.mipStarts.push_back(startValues(given, KAVO_COLUMN, values));
  });
}

int kavo_clear_mip_starts(trpRec* model) {
  return guard([&] { needIdle(model).model.mipStarts.clear(); });
}

int kavo_set_basis(trpRec* model, const int* columns, const int* rows) {
  return guard([&] {
    kavo::Model& given = needIdle(model).model;
    std::vector<int> ofColumns, ofRows;
    if (columns != nullptr || rows != nullptr) {
      ofColumns = startStatuses(given, KAVO_COLUMN, columns);
      ofRows = startStatuses(given, KAVO_ROW, rows);
    }
    given.columnStart = std::move(ofColumns);
    given.rowStart = std::move(ofRows);
  });
}

int kavo_set_basis_ratio(trpRec* model, double ratio) {
  return guard([&] {
    trpRec& record = needIdle(model);
    if (!(ratio >= 0 && ratio <= 1))
      throw Error(KAVO_INVALID, fmt::format("the basis ratio {} is not within 0 and 1", ratio));
    record.basisRatio = ratio;
  });
}

int kavo_read_point(const trpRec* model, const char* path, double* values, size_t* unknown) {
  return guard([&] {
    const kavo::Model& given = need(model).model;
    if (given.columns.size() > 0) need(values, "the values");
    const kavo::reader::Point point = kavo::reader::readPoint(given, &need(path, "the path"));
    std::copy(point.values.begin(), point.values.end(), values);
    if (unknown != nullptr) *unknown = point.unknown;
  });
}

}  // extern "C"

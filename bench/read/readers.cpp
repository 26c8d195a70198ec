#include "bench/read/readers.h"

#include <CoinLpIO.hpp>
#include <CoinMessageHandler.hpp>
#include <CoinMpsIO.hpp>
#include <cstring>
#include <stdexcept>

#include "kavo/reader/reader.h"

namespace bench {

namespace {

template <class T>
std::size_t bytesOf(const std::vector<T>& array) {
  return array.size() * sizeof(T);
}

std::size_t bytesOf(const kavo::Names& names) {
  std::size_t sum = names.size() * sizeof(std::size_t);
  for (std::size_t i = 0; i < names.size(); ++i) sum += std::strlen(names.at(i)) + 1;
  return sum;
}

}  // namespace

void readWithKavo(const std::string& path, std::size_t n) {
  if (kavo::reader::read(path).columns.size() != n) throw std::runtime_error(path + ": wrong number of columns");
}

void readWithCoinUtils(const std::string& path, std::size_t n) {
  int columns = -1;
  if (path.ends_with(".lp")) {
    CoinLpIO reader;
    reader.messageHandler()->setLogLevel(0);
    reader.readLp(path.c_str());
    columns = reader.getNumCols();
  } else {
    CoinMpsIO reader;
    reader.messageHandler()->setLogLevel(0);
    if (reader.readMps(path.c_str(), "") == 0) columns = reader.getNumCols();
  }
  if (columns != static_cast<int>(n)) throw std::runtime_error(path + ": CoinUtils cannot read it");
}

std::size_t arrayBytes(const kavo::Model& model) {
  const kavo::Columns& columns = model.columns;
  const kavo::Rows& rows = model.rows;
  std::size_t sum = bytesOf(columns.lower) + bytesOf(columns.upper) + bytesOf(columns.type) + bytesOf(columns.names);
  sum += bytesOf(rows.start) + bytesOf(rows.column) + bytesOf(rows.value) + bytesOf(rows.lower) + bytesOf(rows.upper);
  sum += bytesOf(rows.expression) + bytesOf(rows.names) + bytesOf(model.primalStart) + bytesOf(model.dualStart);
  for (const kavo::Objective& objective : model.objectives) sum += bytesOf(objective.column) + bytesOf(objective.value);
  return sum;
}

}  // namespace bench

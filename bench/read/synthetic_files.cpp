#include "bench/read/synthetic_files.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <random>
#include <stdexcept>
#include <vector>

namespace bench {

namespace {

constexpr std::size_t kTerms = 3;

class File {
 public:
  explicit File(const std::string& path) : file_(std::fopen(path.c_str(), "wb")) {
    if (file_ == nullptr) throw std::runtime_error(fmt::format("cannot write {}", path));
  }
  ~File() {
    flush();
    std::fclose(file_);
  }
  File(const File&) = delete;
  File& operator=(const File&) = delete;

  template <class... Args>
  void text(fmt::format_string<Args...> format, Args&&... args) {
    fmt::format_to(std::back_inserter(buffer_), format, std::forward<Args>(args)...);
    if (buffer_.size() > kFull) flush();
  }
  template <class T>
  void bytes(T value) {
    std::array<char, sizeof(T)> raw;
    std::memcpy(raw.data(), &value, sizeof(T));
    buffer_.append(raw.data(), raw.data() + raw.size());
    if (buffer_.size() > kFull) flush();
  }

 private:
  static constexpr std::size_t kFull = 1 << 16;
  void flush() {
    std::fwrite(buffer_.data(), 1, buffer_.size(), file_);
    buffer_.clear();
  }

  std::FILE* file_;
  fmt::memory_buffer buffer_;
};

struct Lp {
  explicit Lp(std::size_t n);

  char type(std::size_t i) const { return "GLE"[i % 3]; }
  bool bounded(std::size_t j) const { return j % 4 == 0; }  // to 10, others have no upper bound

  std::size_t size;
  std::vector<double> cost, side;
  // By columns, and by rows.
  std::vector<std::array<int, kTerms>> row;
  std::vector<std::array<double, kTerms>> value;
  std::vector<std::size_t> rowStart;
  std::vector<int> rowColumn;
  std::vector<double> rowValue;
};

Lp::Lp(std::size_t n)
    : size(n), cost(n), side(n), row(n), value(n), rowStart(n + 2), rowColumn(kTerms * n), rowValue(kTerms * n) {
  std::mt19937 random(7);
  const auto number = [&random] { return static_cast<double>(100000 + random() % 900000) / 100000; };
  for (std::size_t j = 0; j < n; ++j) {
    cost[j] = number();
    side[j] = number();
    for (std::size_t k = 0; k < kTerms; ++k) {
      const auto end = row[j].begin() + static_cast<std::ptrdiff_t>(k);
      do row[j][k] = static_cast<int>(random() % n);
      while (std::find(row[j].begin(), end, row[j][k]) != end);
      value[j][k] = number();
      ++rowStart[static_cast<std::size_t>(row[j][k]) + 2];
    }
  }
  for (std::size_t i = 2; i < rowStart.size(); ++i) rowStart[i] += rowStart[i - 1];
  for (std::size_t j = 0; j < n; ++j) {
    for (std::size_t k = 0; k < kTerms; ++k) {
      const std::size_t place = rowStart[static_cast<std::size_t>(row[j][k]) + 1]++;
      rowColumn[place] = static_cast<int>(j);
      rowValue[place] = value[j][k];
    }
  }
}

void writeMps(const Lp& lp, const std::string& path) {
  File file(path);
  file.text("NAME synthetic FREE\nROWS\n N  obj\n");
  for (std::size_t i = 0; i < lp.size; ++i) file.text(" {}  r{}\n", lp.type(i), i);
  file.text("COLUMNS\n");
  for (std::size_t j = 0; j < lp.size; ++j) {
    file.text("    x{}  obj  {}\n", j, lp.cost[j]);
    for (std::size_t k = 0; k < kTerms; ++k) file.text("    x{}  r{}  {}\n", j, lp.row[j][k], lp.value[j][k]);
  }
  file.text("RHS\n");
  for (std::size_t i = 0; i < lp.size; ++i) file.text("    RHS  r{}  {}\n", i, lp.side[i]);
  file.text("BOUNDS\n");
  for (std::size_t j = 0; j < lp.size; ++j) {
    if (lp.bounded(j)) file.text(" UP BND  x{}  10\n", j);
  }
  file.text("ENDATA\n");
}

// A term of a sum, in lines of some terms each.
void writeTerm(File& file, std::size_t k, int column, double value) {
  file.text("{}{}{} x{}", k > 0 && k % 5 == 0 ? "\n  " : "", k > 0 ? " + " : " ", value, column);
}

void writeLpFile(const Lp& lp, const std::string& path) {
  File file(path);
  file.text("Minimize\n obj:");
  for (std::size_t j = 0; j < lp.size; ++j) writeTerm(file, j, static_cast<int>(j), lp.cost[j]);
  file.text("\nSubject To\n");
  for (std::size_t i = 0; i < lp.size; ++i) {
    const std::size_t start = lp.rowStart[i];
    file.text(" r{}:", i);
    for (std::size_t k = start; k < lp.rowStart[i + 1]; ++k) {
      writeTerm(file, k - start, lp.rowColumn[k], lp.rowValue[k]);
    }
    constexpr std::array<const char*, 3> kRelations = {">=", "<=", "="};
    file.text(" {} {}\n", kRelations[i % 3], lp.side[i]);
  }
  file.text("Bounds\n");
  for (std::size_t j = 0; j < lp.size; ++j) {
    if (lp.bounded(j)) file.text(" x{} <= 10\n", j);
  }
  file.text("End\n");
}

void writeHeader(const Lp& lp, File& file, bool binary) {
  const auto equations = static_cast<std::size_t>(lp.size / 3);
  file.text("{}3 0 1 0\n {} {} 1 0 {}\n 0 0\n 0 0\n 0 0 0\n 0 0 {} 0\n 0 0 0 0 0\n {} {}\n 0 0\n 0 0 0 0 0\n",
            binary ? 'b' : 'g', lp.size, lp.size, equations, binary ? 1 : 0, kTerms * lp.size, lp.size);
}

// One writer for both forms: a number or word of the file is text on a line, or bytes.
class NlWriter {
 public:
  NlWriter(File& file, bool binary) : file_(file), binary_(binary) {}

  void segment(char letter, int number) {
    binary_ ? file_.bytes(letter), file_.bytes(number) : file_.text("{}{}", letter, number);
  }
  void open(char letter) { binary_ ? file_.bytes(letter) : file_.text("{}\n", letter); }
  void number(int value) { binary_ ? file_.bytes(value) : file_.text(" {}", value); }
  void constant(double value) { binary_ ? file_.bytes('n'), file_.bytes(value) : file_.text("n{}\n", value); }
  void kind(char digit) { binary_ ? file_.bytes(digit) : file_.text("{}", digit); }
  void real(double value) { binary_ ? file_.bytes(value) : file_.text(" {}", value); }
  void plain(int value) { binary_ ? file_.bytes(value) : file_.text("{}", value); }
  void end() {
    if (!binary_) file_.text("\n");
  }

 private:
  File& file_;
  bool binary_;
};

void writeBounds(const Lp& lp, NlWriter& nl) {
  nl.open('r');
  for (std::size_t i = 0; i < lp.size; ++i) {
    nl.kind("214"[i % 3]);
    nl.real(lp.side[i]);
    nl.end();
  }
  nl.open('b');
  for (std::size_t j = 0; j < lp.size; ++j) {
    nl.kind(lp.bounded(j) ? '0' : '2');
    nl.real(0);
    if (lp.bounded(j)) nl.real(10);
    nl.end();
  }
}

void writeTerms(NlWriter& nl, std::size_t count, const int* column, const double* value) {
  for (std::size_t k = 0; k < count; ++k) {
    nl.plain(column == nullptr ? static_cast<int>(k) : column[k]);
    nl.real(value[k]);
    nl.end();
  }
}

void writeNl(const Lp& lp, const std::string& path, bool binary) {
  File file(path);
  writeHeader(lp, file, binary);
  NlWriter nl(file, binary);
  const int n = static_cast<int>(lp.size);
  for (int i = 0; i < n; ++i) {
    nl.segment('C', i);
    nl.end();
    nl.constant(0);
  }
  nl.segment('O', 0);
  nl.number(0);
  nl.end();
  nl.constant(0);
  writeBounds(lp, nl);
  nl.segment('k', n - 1);
  nl.end();
  for (int j = 1; j < n; ++j) {
    nl.plain(static_cast<int>(kTerms) * j);
    nl.end();
  }
  for (std::size_t i = 0; i < lp.size; ++i) {
    const std::size_t start = lp.rowStart[i], count = lp.rowStart[i + 1] - start;
    if (count == 0) continue;
    nl.segment('J', static_cast<int>(i));
    nl.number(static_cast<int>(count));
    nl.end();
    writeTerms(nl, count, &lp.rowColumn[start], &lp.rowValue[start]);
  }
  nl.segment('G', 0);
  nl.number(n);
  nl.end();
  writeTerms(nl, lp.size, nullptr, lp.cost.data());
}

}  // namespace

void writeSyntheticFiles(std::size_t n, const std::string& stem) {
  const Lp lp(n);
  writeNl(lp, stem + "-text.nl", false);
  writeNl(lp, stem + "-binary.nl", true);
  writeMps(lp, stem + ".mps");
  writeLpFile(lp, stem + ".lp");
}

}  // namespace bench

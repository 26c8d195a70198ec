#include "brel/result/stored.h"

#include <fmt/format.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <span>
#include <sstream>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

#include "brel/hash.h"
#include "brel/host.h"
#include "tav/util/exception.h"
#include "tav/util/number.h"

namespace brel::result {
namespace {

constexpr std::string_view kHead = "grblink results 1";
constexpr std::string_view kBasis = "basis";

struct Title {
  std::string_view text;
  int quantity;
};
constexpr Title kColumnTitles[] = {
    {"value", KAVO_PRIMAL},        {"reduced_cost", KAVO_REDUCED_COST}, {"cost_low", KAVO_COST_LOW},
    {"cost_high", KAVO_COST_HIGH}, {"lower_low", KAVO_LOWER_LOW},       {"lower_high", KAVO_LOWER_HIGH},
    {"upper_low", KAVO_UPPER_LOW}, {"upper_high", KAVO_UPPER_HIGH},
};
constexpr Title kRowTitles[] = {
    {"activity", KAVO_ACTIVITY}, {"dual", KAVO_DUAL},           {"slack", KAVO_SLACK},
    {"side_low", KAVO_SIDE_LOW}, {"side_high", KAVO_SIDE_HIGH},
};

std::string inOneLine(const std::string& name) {
  std::string text;
  for (const char c : name) {
    if (c == '\n' || c == '\r') {
      text += c == '\n' ? "\\n" : "\\r";
    } else {
      text.append(c == '\\' ? 2 : 1, c);
    }
  }
  return text;
}

std::string contentsOf(const std::string& path) {
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) {
    throw tav::UserException(fmt::format("rngread: {} is a folder", path));
  }
  errno = 0;
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  if (file && file.peek() != std::ifstream::traits_type::eof()) text << file.rdbuf();
  if (!file.is_open() || file.bad() || text.bad()) {
    const std::string why = std::generic_category().message(errno != 0 ? errno : EIO);
    throw tav::UserException(fmt::format("rngread: {} cannot be read: {}", path, why));
  }
  return std::move(text).str();
}

// The results of the columns or the rows.
struct Part {
  int kind;
  std::string_view word;
  std::span<const Title> titles;
  std::size_t count;
  kavo_names names;

  // As it stands in the file.
  std::string name(std::size_t i) const {
    const std::string given = nameOf(names, i);
    return given.empty() ? fmt::format("{}[{}]", kind == KAVO_COLUMN ? "_svar" : "_scon", i + 1) : inOneLine(given);
  }
};

std::array<Part, 2> partsOf(const UserModel& user) {
  return {Part{KAVO_COLUMN, "variables", kColumnTitles, user.columns.count, user.columns.names},
          Part{KAVO_ROW, "rows", kRowTitles, user.rows.count, user.rows.names}};
}

// The numbers of a finish, in the order in which they are written.
std::array<double*, 10> numbersOf(kavo_finish& finish) {
  return {&finish.objective, &finish.bound,     &finish.gap,        &finish.iterations, &finish.nodes,
          &finish.seconds,   &finish.solutions, &finish.relaxation, &finish.condition,  &finish.exact_condition};
}

void addNames(const kavo_names& names, std::size_t count, Hash& hash) {
  for (std::size_t i = 0; i < count; ++i) hash.add(std::string_view(nameOf(names, i)));
}

void addRows(const kavo_rows& rows, Hash& hash) {
  const std::size_t nonzeros = rows.start[rows.count];
  hash.add(rows.start, rows.count + 1);
  hash.add(rows.column, nonzeros);
  hash.add(rows.value, nonzeros);
  hash.add(rows.lower, rows.count);
  hash.add(rows.upper, rows.count);
  hash.add(rows.expression, rows.count);
  hash.add(rows.quadratic, rows.count);
  hash.add(rows.indicator, rows.count);
  hash.add(rows.indicator_value, rows.count);
}

void addExpressions(const UserModel& user, Hash& hash) {
  kavo_expressions all{};
  checkHost(kavo_link_expressions(user.host, &all));
  const std::size_t nodes = all.count == 0 ? 0 : all.start[all.count];
  hash.add(all.start, all.count + 1);
  hash.add(all.op, nodes);
  hash.add(all.index, nodes);
  hash.add(all.value, nodes);
  hash.add(all.defined, all.defined_count);
  const kavo_quadratics& products = user.quadratics;
  const std::size_t terms = products.count == 0 ? 0 : products.start[products.count];
  hash.add(products.start, products.count + 1);
  hash.add(products.first, terms);
  hash.add(products.second, terms);
  hash.add(products.value, terms);
  hash.add(user.logical.expression, user.logical.count);
}

void addSets(const kavo_sets& sets, Hash& hash) {
  if (sets.count == 0) return;
  hash.add(sets.type, sets.count);
  hash.add(sets.start, sets.count + 1);
  hash.add(sets.column, sets.start[sets.count]);
  hash.add(sets.weight, sets.start[sets.count]);
}

void addObjective(const UserModel& user, Hash& hash) {
  hash.add(static_cast<long long>(user.objective.has_value()));
  if (!user.objective) return;
  const kavo_objective& o = *user.objective;
  for (const int number : {o.sense, o.expression, o.quadratic}) hash.add(static_cast<long long>(number));
  hash.add(o.constant);
  hash.add(o.column, o.terms);
  hash.add(o.value, o.terms);
}

// The line that says which model it is: sizes, and a hash of all its numbers and names.
std::string modelLine(const UserModel& user) {
  Hash hash;
  hash.add(user.columns.lower, user.columns.count);
  hash.add(user.columns.upper, user.columns.count);
  hash.add(user.columns.type, user.columns.count);
  addRows(user.rows, hash);
  addExpressions(user, hash);
  addSets(user.sets, hash);
  addObjective(user, hash);
  addNames(user.columns.names, user.columns.count, hash);
  addNames(user.rows.names, user.rows.count, hash);
  return fmt::format("model: {} variables, {} rows, {} nonzeros, checksum {:016x}", user.columns.count, user.rows.count,
                     user.rows.start[user.rows.count], hash.value());
}

std::string endLine(std::string_view text) {
  Hash hash;
  hash.add(text);
  return fmt::format("end {:016x}", hash.value());
}

template <class Out>
void writePart(trpRec* host, const Part& part, Out out) {
  std::vector<const double*> columns;
  int* basis = nullptr;
  std::size_t count = 0;
  fmt::format_to(out, "{}:", part.word);
  for (const Title& title : part.titles) {
    if (kavo_link_has_result(host, title.quantity) == 0) continue;
    double* values = nullptr;
    checkHost(kavo_link_result(host, title.quantity, &values, &count));
    columns.push_back(values);
    fmt::format_to(out, " {}", title.text);
  }
  if (kavo_link_has_basis(host, part.kind) != 0) {
    checkHost(kavo_link_result_basis(host, part.kind, &basis, &count));
    fmt::format_to(out, " {}", kBasis);
  }
  fmt::format_to(out, " name\n");
  for (std::size_t i = 0; i < part.count; ++i) {
    for (const double* values : columns) fmt::format_to(out, "{} ", values[i]);
    if (basis != nullptr) fmt::format_to(out, "{} ", basis[i]);
    fmt::format_to(out, "{}\n", part.name(i));
  }
}

// Reads line by line and knows where it is.
class Reader {
 public:
  Reader(const UserModel& user, const std::string& path) : user_(user), path_(path), text_(contentsOf(path)) {}

  kavo_finish read() {
    if (next() != kHead) fail("this is no file that rngrestart has written");
    requireModel(next());
    requireWhole();
    const kavo_finish finish = readFinish();
    for (const Part& part : partsOf(user_)) readPart(part);
    return finish;
  }

 private:
  [[noreturn]] void fail(const std::string& why) const {
    throw tav::UserException(fmt::format("{}, line {}: {}", path_, line_, why));
  }

  std::string_view next() {
    const std::string_view rest = std::string_view(text_).substr(place_);
    const auto end = rest.find('\n');
    ++line_;
    if (end == std::string_view::npos) fail("the file ends too early");
    place_ += end + 1;
    return rest.substr(0, end);
  }

  void requireModel(std::string_view line) const {
    const std::string wanted = modelLine(user_);
    if (line == wanted) return;
    fail(fmt::format("the file holds the results of another model: it says \"{}\", and this is \"{}\"", line, wanted));
  }

  // That nothing was lost or altered between the head and the end.
  void requireWhole() {
    const auto end = text_.size() < 2 ? std::string::npos : text_.rfind('\n', text_.size() - 2);
    const std::string_view all(text_);
    if (end != std::string::npos && all.substr(end + 1) == endLine(all.substr(0, end + 1)) + "\n") return;
    isWhole_ = false;  // the lines before the damage may still tell where it is
  }

  kavo_finish readFinish() {
    kavo_finish finish{};
    Fields fields(next());
    if (fields.next() != "outcome:") fail("expected the outcome");
    finish.status = whole(fields.next());
    finish.stop = whole(fields.next());
    for (double* value : numbersOf(finish)) *value = number(fields.next());
    if (!fields.rest().empty()) fail("the outcome has too many numbers");
    return finish;
  }

  void readPart(const Part& part) {
    std::vector<double*> columns;
    int* basis = nullptr;
    std::size_t count = 0;
    Fields titles(next());
    if (titles.next() != fmt::format("{}:", part.word)) fail(fmt::format("expected the titles of the {}", part.word));
    for (std::string_view title = titles.next(); title != "name"; title = titles.next()) {
      if (title == kBasis) {
        checkHost(kavo_link_result_basis(user_.host, part.kind, &basis, &count));
      } else {
        checkHost(kavo_link_result(user_.host, quantityOf(part, title), &columns.emplace_back(), &count));
      }
    }
    for (std::size_t i = 0; i < part.count; ++i) {
      Fields fields(next());
      for (double* values : columns) values[i] = number(fields.next());
      if (basis != nullptr) basis[i] = status(fields.next());
      if (fields.rest() != part.name(i)) fail(fmt::format("expected {}", part.name(i)));
    }
    if (part.kind == KAVO_ROW && !isWhole_) fail("the file was altered after it was written");
  }

  int quantityOf(const Part& part, std::string_view title) const {
    for (const Title& known : part.titles) {
      if (known.text == title) return known.quantity;
    }
    fail(fmt::format("there is no column {}", title));
  }

  double number(std::string_view field) const {
    const auto value = tav::util::toDouble(field);
    if (!value) fail(fmt::format("expected a number, found \"{}\"", field));
    return *value;
  }
  int whole(std::string_view field) const {
    const auto value = tav::util::toInt(field);
    if (!value) fail(fmt::format("expected a whole number, found \"{}\"", field));
    return *value;
  }
  int status(std::string_view field) const {
    const int value = whole(field);
    if (value < KAVO_BASIS_LOWER || value > KAVO_SUPERBASIC) fail(fmt::format("there is no basis status {}", value));
    return value;
  }

  // The fields of a line, one blank between them.
  class Fields {
   public:
    explicit Fields(std::string_view line) : rest_(line) {}
    std::string_view next() {
      const auto end = std::min(rest_.find(' '), rest_.size());
      const std::string_view field = rest_.substr(0, end);
      rest_.remove_prefix(std::min(end + 1, rest_.size()));
      return field;
    }
    std::string_view rest() const { return rest_; }

   private:
    std::string_view rest_;
  };

  const UserModel& user_;
  const std::string& path_;
  std::string text_;
  std::size_t place_ = 0;
  int line_ = 0;
  bool isWhole_ = true;
};

}  // namespace

std::string stored(const UserModel& user, const kavo_finish& finish) {
  fmt::memory_buffer buffer;
  const auto out = std::back_inserter(buffer);
  fmt::format_to(out, "{}\n{}\noutcome: {} {}", kHead, modelLine(user), finish.status, finish.stop);
  kavo_finish numbers = finish;
  for (const double* value : numbersOf(numbers)) fmt::format_to(out, " {}", *value);
  fmt::format_to(out, "\n");
  for (const Part& part : partsOf(user)) writePart(user.host, part, out);
  const std::string text = fmt::to_string(buffer);
  return text + endLine(text) + "\n";
}

kavo_finish readStored(const UserModel& user, const std::string& path) { return Reader(user, path).read(); }

}  // namespace brel::result

#include "tests/readers/model_text.h"

#include <fmt/format.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <zlib.h>

#include "kavo/error.h"
#include "kavo/model/operators.h"
#include "kavo/reader/reader.h"
#include "tests/readers/folder.h"

namespace kavo::reader {

namespace {

std::string terms(const Model& model, const int* column, const double* value, std::size_t count) {
  std::string text;
  for (std::size_t i = 0; i < count; ++i) {
    text += fmt::format(" {} {}", value[i], model.columns.names.at(static_cast<std::size_t>(column[i])));
  }
  return text;
}

std::string quadraticTerms(const Model& model, int number) {
  std::string text;
  const Quadratics& all = model.quadratics;
  if (number < 0) return text;
  const auto q = static_cast<std::size_t>(number);
  for (std::size_t k = all.start[q]; k < all.start[q + 1]; ++k) {
    text += fmt::format(" + {} {}*{}", all.value[k], model.columns.names.at(static_cast<std::size_t>(all.first[k])),
                        model.columns.names.at(static_cast<std::size_t>(all.second[k])));
  }
  return text;
}

std::string expression(const Model& model, int number) {
  std::string text;
  const Expressions& all = model.expressions;
  if (number < 0) return text;
  const auto e = static_cast<std::size_t>(number);
  for (std::size_t k = all.start[e]; k < all.start[e + 1]; ++k) {
    text += text.empty() ? " {" : " ";
    if (all.op[k] == KAVO_OP_NUMBER) {
      text += fmt::format("{}", all.value[k]);
    } else if (all.op[k] == KAVO_OP_VARIABLE) {
      text += model.columns.names.at(static_cast<std::size_t>(all.index[k]));
    } else {
      text += operatorName(all.op[k]);
      if (arity(all.op[k]) < 0) text += fmt::format("({})", all.index[k]);
    }
  }
  return text + "}";
}

// The entry of an element in an array that is empty when no element has one.
int entry(const std::vector<int>& values, std::size_t i) { return values.empty() ? -1 : values[i]; }

std::string beyondLinear(const Model& model, std::size_t row) {
  const int column = entry(model.rows.indicator, row);
  return quadraticTerms(model, entry(model.rows.quadratic, row)) +
         expression(model, entry(model.rows.expression, row)) +
         (column < 0 ? std::string()
                     : fmt::format(" if {}={}", model.columns.names.at(static_cast<std::size_t>(column)),
                                   model.rows.indicatorValue[row]));
}

}  // namespace

std::string gzip(std::string_view content) {
  std::string out(content.size() + 100, '\0');
  z_stream stream{};
  EXPECT_EQ(deflateInit2(&stream, 6, Z_DEFLATED, 16 + MAX_WBITS, 8, Z_DEFAULT_STRATEGY), Z_OK);
  stream.next_in = reinterpret_cast<Bytef*>(const_cast<char*>(content.data()));
  stream.avail_in = static_cast<uInt>(content.size());
  stream.next_out = reinterpret_cast<Bytef*>(out.data());
  stream.avail_out = static_cast<uInt>(out.size());
  EXPECT_EQ(deflate(&stream, Z_FINISH), Z_STREAM_END);
  out.resize(stream.total_out);
  deflateEnd(&stream);
  return out;
}

Model readAs(const std::string& name, std::string_view text) {
  const kavo_test::Folder folder;
  const std::string path = folder.write(name, name.ends_with(".gz") ? gzip(text) : std::string(text));
  Model model = read(path);
  EXPECT_EQ(model.file, path);
  return model;
}

std::string messageAs(const std::string& name, std::string_view text) {
  try {
    readAs(name, text);
  } catch (const Error& error) {
    EXPECT_EQ(error.status(), KAVO_FILE) << error.what();
    return error.what();
  }
  ADD_FAILURE() << "this was read:\n" << text;
  return "";
}

void expectMessages(const std::string& name, const std::vector<BadText>& texts) {
  for (const auto& [text, message] : texts) {
    SCOPED_TRACE(text);
    EXPECT_THAT(messageAs(name, text),
                testing::AllOf(testing::HasSubstr(name + "\": line"), testing::HasSubstr(message)));
  }
}

std::string describe(const Model& model) {
  std::string text;
  for (const Objective& o : model.objectives) {
    text += fmt::format("{} {}:{}{}{}{}\n", o.sense == KAVO_MAXIMIZE ? "max" : "min", o.name,
                        terms(model, o.column.data(), o.value.data(), o.value.size()),
                        o.constant == 0 ? std::string() : fmt::format(" {:+}", o.constant),
                        quadraticTerms(model, o.quadratic), expression(model, o.expression));
  }
  for (std::size_t i = 0; i < model.rows.size(); ++i) {
    const std::size_t start = model.rows.start[i];
    text += fmt::format("{} [{}, {}]:{}{}\n", model.rows.names.at(i), model.rows.lower[i], model.rows.upper[i],
                        terms(model, model.rows.column.data() + start, model.rows.value.data() + start,
                              model.rows.start[i + 1] - start),
                        beyondLinear(model, i));
  }
  for (std::size_t i = 0; i < model.columns.size(); ++i) {
    text += fmt::format("{} {} [{}, {}]\n", model.columns.names.at(i), "CBISN"[model.columns.type[i]],
                        model.columns.lower[i], model.columns.upper[i]);
  }
  const OrderedSets& sets = model.sets;
  for (std::size_t s = 0; s < sets.size(); ++s) {
    text += fmt::format("{} S{}:", sets.names.at(s), sets.type[s]);
    for (std::size_t k = sets.start[s]; k < sets.start[s + 1]; ++k) {
      text += fmt::format("{} {} {}", &","[k == sets.start[s]],
                          model.columns.names.at(static_cast<std::size_t>(sets.column[k])), sets.weight[k]);
    }
    text += '\n';
  }
  return text;
}

std::string lineOf(const Model& model, const std::string& name) {
  const std::string text = fmt::format("\n{}", describe(model));
  const std::size_t begin = text.find("\n" + name + " ") + 1;
  return text.substr(begin, text.find('\n', begin) - begin);
}

}  // namespace kavo::reader

#include <limits>
#include <string>

#include "tav/attr/lib/info.h"
#include "tav/attr/lib/info_registry.h"
#include "tav/yaml/emitter.h"
#include "tav/yaml/parser.h"
#include "tests/tav/thrown.h"

using tav::CheckException;
using tav::attr::lib::Info;
using tav::attr::lib::infoRegistry;
using tav::yaml::Emitter;
using tav::yaml::EmitterException;
using tav::yaml::Event;
using tav::yaml::EventKind;
using tav::yaml::Parser;
using tav::yaml::ParserException;
using tav::yaml::Scalar;

namespace {

// A parser that has passed the start of the stream and of the document.
struct Document {
  explicit Document(const std::string& text) : parser(text) {
    parser.take(EventKind::kStreamStart);
    parser.take(EventKind::kDocumentStart);
  }
  Parser parser;
};

template <class T>
T read(const std::string& text) {
  T value{};
  Document(text).parser >> value;
  return value;
}

// The parser's error with its places; fails when there is none.
template <class F>
ParserException parserError(F&& f) {
  try {
    f();
  } catch (const ParserException& error) {
    return error;
  }
  ADD_FAILURE() << "nothing was raised";
  return {"", {}, {}, -1};
}

}  // namespace

TEST(YamlConvertTest, TakesTheWholeTextOrNothing) {
  EXPECT_EQ(read<int>("2147483647"), 2147483647);
  EXPECT_EQ(read<double>("-1.5e3"), -1500);
  EXPECT_EQ(read<double>("1e-400"), 0) << "too small is not too large";
  EXPECT_EQ(read<double>("-inf"), -std::numeric_limits<double>::infinity());
  EXPECT_EQ(read<std::string>("' 12'"), " 12");
  for (const char* text : {"true", "YES", "1", "On"}) EXPECT_TRUE(read<bool>(text)) << text;
  for (const char* text : {"False", "no", "0", "Off"}) EXPECT_FALSE(read<bool>(text)) << text;
}

TEST(YamlConvertTest, RefusesAnythingElse) {
  const auto message = [](auto value, const std::string& text) {
    return messageOf<ParserException>([&] { read<decltype(value)>(text); });
  };
  EXPECT_EQ(message(0, "' 12'"), "Cannot convert ' 12' to 'int'.");
  EXPECT_EQ(message(0.0, "1e400"), "Cannot convert '1e400' to 'double'.");
  EXPECT_EQ(message(0.0, "-1e400"), "Cannot convert '-1e400' to 'double'.");
  EXPECT_EQ(message(false, "maybe"), "Cannot convert 'maybe' to 'bool'.");
  const auto error = parserError([] { read<int>("\n  many"); });
  EXPECT_EQ(error.code(), ParserException::kConversion);
  EXPECT_EQ(error.start().line, 2U);
  EXPECT_EQ(error.start().column, 3U);
  EXPECT_EQ(error.start().index, 3U);
  EXPECT_EQ(error.end().column, 7U);
}

TEST(YamlParserTest, ManyEventsComeInOrderThroughSeveralRefills) {
  std::string text = "items: [";
  for (int i = 0; i < 25; ++i) text += std::to_string(i) + ", ";
  Document document(text + "]\n--- {}\n");
  Parser& parser = document.parser;
  parser.take(EventKind::kMapStart);
  EXPECT_EQ(parser.take(EventKind::kScalar).text(), "items");
  parser.take(EventKind::kListStart);
  for (int i = 0; i < 25; ++i) {
    int value = -1;
    parser >> value;
    EXPECT_EQ(value, i);
  }
  for (const EventKind kind : {EventKind::kListEnd, EventKind::kMapEnd, EventKind::kDocumentEnd,
                               EventKind::kDocumentStart, EventKind::kMapStart, EventKind::kMapEnd,
                               EventKind::kDocumentEnd, EventKind::kStreamEnd, EventKind::kUnknown}) {
    EXPECT_EQ(parser.peek(), kind);
    parser.take(kind);
  }
}

TEST(YamlParserTest, ErrorsTellPlaceAndCode) {
  const auto unexpected = parserError([] { Document("a: 1").parser.take(EventKind::kScalar); });
  EXPECT_EQ(unexpected.message(), "Expected event 'Scalar', but is 'MapStart'");
  EXPECT_EQ(unexpected.code(), ParserException::kUnexpectedEvent);
  EXPECT_EQ(parserError([] { Document("*a").parser.take(EventKind::kScalar); }).message(),
            "Expected event 'Scalar', but is 'Unknown'");
  const struct Case {
    const char* text;
    int code;
    std::size_t line;
  } cases[] = {
      {"a: [1,\n  }", ParserException::kParser, 2},
      {"a: 'open", 0, 1},  // a scanner error
      {"a: \xff", ParserException::kReader, 1},
  };
  for (const auto& c : cases) {
    const auto error = parserError([&] {
      Parser parser(c.text);
      while (parser.next().kind() != EventKind::kStreamEnd) {
      }
    });
    EXPECT_EQ(error.code(), c.code) << c.text;
    EXPECT_EQ(error.start().line, c.line) << c.text;
    EXPECT_FALSE(error.message().empty());
  }
}

TEST(YamlEmitterTest, RefusalsAreReportedAndNothingIsFreedTwice) {
  bool accepts = true;
  const auto sink = [&](std::string_view) { return accepts; };
  Emitter misplaced(sink);
  EXPECT_EQ(thrown<EmitterException>([&] { misplaced.scalar("text"); }).code(), EmitterException::kEmit);
  Emitter refused(sink);
  refused.startStream();
  refused.startDocument();
  refused.scalar("text");
  accepts = false;
  const auto error = thrown<EmitterException>([&] { refused.flush(); });
  EXPECT_EQ(error.message(), "Cannot flush");
  EXPECT_EQ(error.code(), EmitterException::kFlush);
  EXPECT_EQ(messageOf<CheckException>([] { Scalar("text", ""); }),
            "'strlen(anchor)' (which is 0) must be greater than 0.");
  EXPECT_EQ(messageOf<CheckException>([] { Scalar("text", nullptr, ""); }),
            "'strlen(tag)' (which is 0) must be greater than 0.");
  EXPECT_THROW(Scalar("\xff"), EmitterException);
  const Event moved = Scalar(std::string_view("a\0b", 3), "anchor", "!tag");
  EXPECT_EQ(moved.text(), std::string_view("a\0b", 3));
  EXPECT_EQ(moved.tag(), "!tag");
}

TEST(InfoYamlTest, ReadsAReferenceToAnother) {
  Document document("!RangeInfo_Int32 {name: iis, ref: 7}");
  const auto read = std::dynamic_pointer_cast<tav::attr::AbstractBaseInfo>(infoRegistry().read(document.parser));
  ASSERT_TRUE(read);
  EXPECT_EQ(read->propertyText("ref"), "7");
}

TEST(InfoYamlTest, RefusesWhatADescriptionCannotTake) {
  const struct Case {
    const char* text;
    const char* message;
  } cases[] = {
      {"!RangeInfo_Int32 {lo: 3, def: 2}", "Value of property 'def' (which is 2) is not supported."},
      {"!RangeInfo_Int32 {def: 2, lo: 3}", "Value of property 'lo' (which is 3) is not supported."},
      {"!RangeInfo_Int32 {up: 2, lo: 3}", "Value of property 'lo' (which is 3) is not supported."},
      {"!RangeInfo_Float64 {up: nan}", "Value of property 'up' (which is nan) is not supported."},
      {"!RangeInfo_Int32 {def: 1.5}", "Value of property 'def' (which is 1.5) is not supported."},
      {"!Info_String {lo: 1}", "Value of property 'lo' (which is 1) is not supported."},
      {"!Info_String {s_set: maybe}", "Value of property 's_set' (which is maybe) is not supported."},
      {"!Info_Vector {name: x}", "Registry agent required for 'Info_Vector'."},
      {"{name: x}", "Registry agent required for ''."},
      {"!Info_String {name: [x]}", "Expected event 'Scalar', but is 'ListStart'"},
  };
  for (const auto& c : cases) {
    Document document(c.text);
    EXPECT_EQ(messageOf([&] { infoRegistry().read(document.parser); }), c.message);
  }
  EXPECT_EQ(thrown([] { Info<int>().setProperty("ref", "x"); }).location().file(), "tav/attr/lib/info");
}

#pragma once

#include <string_view>

#include "kavo/writer/text.h"

namespace kavo::writer {

// Writes JSON piece by piece to a Text; the commas are put by the writer.
class JsonText {
 public:
  explicit JsonText(Text& text) : text_(text) {}

  void beginObject() { open('{'); }
  void endObject() { close('}'); }
  void beginArray() { open('['); }
  void endArray() { close(']'); }
  void key(std::string_view name);
  // A string; bytes that are not UTF-8 become U+FFFD. A null pointer is null.
  void value(std::string_view string);
  void value(const char* string);
  // A number; NaN is null, an infinity +-1e100.
  void value(double number);
  // Not an overload of value: text would become a truth unseen.
  void truth(bool is) { piece(is ? "true" : "false"); }
  void null() { piece("null"); }

 private:
  void open(char bracket);
  void close(char bracket);
  void separate();
  void piece(std::string_view written);
  void quoted(std::string_view string);

  Text& text_;
  bool first_ = true;      // nothing stands in the innermost bracket yet
  bool afterKey_ = false;  // a value follows its key
};

}  // namespace kavo::writer

#pragma once

#include <string_view>

namespace tav::opt {

// Where all messages of a run go, in order. The default bodies write to standard output; a host overrides `write` and
// gets everything.
class AbstractLog {
 public:
  virtual ~AbstractLog() = default;
  virtual void endLine();
  // The text as it is, without a newline.
  virtual void write(std::string_view text);
  virtual void writeLine(std::string_view text);
  // "--- " and the text, as a line.
  virtual void status(std::string_view text);
  // "*** ", the kind and ": " unless it is empty, and the text, as a line.
  virtual void message(std::string_view kind, std::string_view text);
  // A message whose kind is a heading, such as "Warning". The text may hold several lines.
  virtual void headed(std::string_view heading, std::string_view text);

 private:
  void writeMessage(std::string_view kind, std::string_view text);
};

}  // namespace tav::opt

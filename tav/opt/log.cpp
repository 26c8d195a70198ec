#include "tav/opt/log.h"

#include <cstdio>

namespace tav::opt {

void AbstractLog::endLine() { write("\n"); }

void AbstractLog::write(std::string_view text) { std::fwrite(text.data(), 1, text.size(), stdout); }

void AbstractLog::writeLine(std::string_view text) {
  write(text);
  endLine();
}

void AbstractLog::status(std::string_view text) {
  write("--- ");
  writeLine(text);
}

void AbstractLog::message(std::string_view kind, std::string_view text) { writeMessage(kind, text); }

void AbstractLog::headed(std::string_view heading, std::string_view text) { writeMessage(heading, text); }

void AbstractLog::writeMessage(std::string_view kind, std::string_view text) {
  write("*** ");
  if (!kind.empty()) {
    write(kind);
    write(": ");
  }
  writeLine(text);
}

}  // namespace tav::opt

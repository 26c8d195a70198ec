#include "app/failure.h"

#include "kavo/kavo.h"

namespace app {

std::string oneLine(std::string_view message) {
  std::string joined;
  while (!message.empty()) {
    const std::size_t end = std::min(message.find('\n'), message.size());
    std::string_view line = message.substr(0, end);
    message.remove_prefix(std::min(end + 1, message.size()));
    const std::size_t text = line.find_first_not_of(" \t\r");
    if (text == std::string_view::npos) continue;
    if (!joined.empty()) joined += joined.back() == ':' || joined.back() == ';' ? " " : "; ";
    joined += line.substr(text);
  }
  return joined;
}

void check(int status) {
  if (status != KAVO_OK) throw Failure(oneLine(kavo_last_error()));
}

}  // namespace app

// Files that a link writes.

#include <string_view>

#include "kavo/api/guard.h"
#include "kavo/link.h"
#include "kavo/writer/file.h"

extern "C" {

int kavo_link_write_file(const char* path, const char* text, size_t length) {
  return kavo::api::guard([&] {
    const std::string_view all(&kavo::api::need(text, "the text"), length);
    kavo::writer::writeFile(&kavo::api::need(path, "the path"), [&](kavo::writer::Text& out) { out << all; });
  });
}

}  // extern "C"

#include "kavo/reader/nl/nl.h"

#include <fmt/format.h>

#include <bit>

#include "kavo/error.h"
#include "kavo/reader/input.h"
#include "kavo/reader/nl/ordered_sets.h"
#include "kavo/reader/nl/segments.h"
#include "kavo/reader/nl/source.h"
#include "kavo/reader/reader.h"

namespace kavo::reader {

namespace nl {

namespace {

// Whether the bytes of numbers stand in the other order than this machine's. Files that do not tell were written on a
// machine like this one.
bool mustSwap(int arithmetic, const std::string& file) {
  constexpr bool kLittle = std::endian::native == std::endian::little;
  switch (arithmetic) {
    case 0:
      return false;
    case 1:
      return !kLittle;
    case 2:
      return kLittle;
    default:
      throw Error(KAVO_NOT_SUPPORTED,
                  fmt::format("{}, line 6: header: the file holds binary numbers of an unknown kind "
                              "({}); write it in text form",
                              file, arithmetic));
  }
}

}  // namespace

Model readText(std::string_view text, const std::string& file) {
  Header header = readHeader(file, text);
  const std::size_t begin = header.length;
  const bool binary = header.binary;
  const int arithmetic = header.arithmetic;
  Draft draft(std::move(header));
  draft.model.file = file;
  if (binary) {
    BinarySource source(file, text, begin, mustSwap(arithmetic, file));
    SegmentReader(source, draft).readAll();
  } else {
    TextSource source(file, text, begin);
    SegmentReader(source, draft).readAll();
  }
  Model model = draft.finish();
  makeOrderedSets(model);
  return model;
}

}  // namespace nl

Model readNl(const std::string& path) {
  Model model;
  {
    const Input input(path);
    model = nl::readText(input.text(), path);
  }
  const std::string_view ending = ".nl";
  const std::string stub = path.ends_with(ending) ? path.substr(0, path.size() - ending.size()) : path;
  nl::readNames(stub, model);
  return model;
}

}  // namespace kavo::reader

#include "brel/load/names.h"

#include <cstring>

namespace brel::load {
namespace {

constexpr std::size_t kLongestName = 255;

// The number of bytes behind a lead byte, -1 for a byte that cannot lead.
int continuationBytes(unsigned char lead) {
  if (lead < 0x80) return 0;
  if (lead >= 0xc2 && lead < 0xe0) return 1;
  if (lead >= 0xe0 && lead < 0xf0) return 2;
  if (lead >= 0xf0 && lead < 0xf5) return 3;
  return -1;
}

}  // namespace

bool isSendable(const char* name) {
  const char* p = name;
  while (*p != '\0') {
    const auto lead = static_cast<unsigned char>(*p++);
    if (lead <= ' ' || lead == 0x7f) return false;
    int rest = continuationBytes(lead);
    if (rest < 0) return false;
    for (; rest > 0; --rest) {
      if ((static_cast<unsigned char>(*p++) & 0xc0) != 0x80) return false;
    }
  }
  return static_cast<std::size_t>(p - name) <= kLongestName;
}

SentNames sentNames(const kavo_names& of, std::size_t count, std::span<const std::string> auxiliary) {
  SentNames result;
  if (of.start == nullptr) return result;
  result.names.reserve(count + auxiliary.size());
  const auto take = [&](const char* name) {
    const bool sendable = isSendable(name);
    if (!sendable) ++result.withheld;
    result.names.push_back(sendable ? name : "");
  };
  for (std::size_t i = 0; i < count; ++i) take(of.text + of.start[i]);
  for (const std::string& name : auxiliary) result.names.push_back(isSendable(name.c_str()) ? name.c_str() : "");
  return result;
}

}  // namespace brel::load

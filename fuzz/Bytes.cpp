// SPDX-License-Identifier: MIT
// Reads an input's bytes around its hole.
#include "fuzz/Bytes.h"

#include <algorithm>
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include "archive/reading/Utf8.h"
#include "archive/reading/ZipFormat.h"

namespace fuzz {

Bytes::Parts Bytes::Split(std::string_view input) {
  constexpr unsigned kMostTimes = 4;
  if (input.size() < kHoleHead || input.substr(0, kHoleMark.size()) != kHoleMark) return {input, {}, 0};
  const std::size_t place = archive::Load32(input.data() + kHoleMark.size());
  const unsigned times = static_cast<unsigned char>(input[kHoleHead - 1]) % (kMostTimes + 1);
  input.remove_prefix(kHoleHead);
  const std::size_t split = std::min(place, input.size());
  return {input.substr(0, split), input.substr(split), times * archive::kWrap32};
}

Bytes::Bytes(const Parts& parts)
    : Source(parts.before.size() + parts.hole + parts.after.size()), fParts(parts) {}

bool Bytes::ReadAt(std::uint64_t offset, void* to, std::size_t length) const {
  constexpr std::size_t kMostAtOnce = 16 << 20;  // filling gigabytes from a hole takes the time of others
  errno = 0;
  if (offset > Size() || length > Size() - offset || length > kMostAtOnce) return false;
  char* at = static_cast<char*>(to);
  const auto copy = [&](std::string_view part, std::uint64_t start) {
    const std::uint64_t from = std::max(offset, start);
    const std::uint64_t end = std::min(offset + length, start + part.size());
    if (from < end) std::memcpy(at + (from - offset), part.data() + (from - start), end - from);
  };
  if (length > 0) std::memset(at, 0, length);
  copy(fParts.before, 0);
  copy(fParts.after, fParts.before.size() + fParts.hole);
  return true;
}

void Broken(std::string_view rule, std::string_view where) {
  std::fprintf(stderr, "rule broken: %.*s %s\n", static_cast<int>(rule.size()), rule.data(),
               where.empty() ? "" : archive::Quoted(where).c_str());
  std::abort();
}

void CheckSentence(const archive::Status& failure) {
  std::string_view rest = failure.Sentence();
  if (rest.empty()) Broken("a refusal tells its reason");
  while (!rest.empty()) {
    const std::size_t length = archive::Utf8Length(rest);
    if (length == 0 || archive::IsControl(rest)) Broken("a sentence is fit for a terminal", rest);
    rest.remove_prefix(length);
  }
}

}  // namespace fuzz

// SPDX-License-Identifier: MIT
// Decoding and checking of stored names.
#include "archive/reading/Names.h"

#include <isa-l/crc.h>

#include <algorithm>

#include "archive/reading/Utf8.h"

namespace archive {
namespace {

bool WritesBackslashes(Host host) {
  return host == Host::Dos || host == Host::Os2 || host == Host::Ntfs || host == Host::Vfat;
}

std::uint32_t Crc(std::string_view bytes) {
  return crc32_gzip_refl(0, reinterpret_cast<const unsigned char*>(bytes.data()), bytes.size());
}

bool IsDrive(std::string_view path) {
  const char letter = path.empty() ? '\0' : static_cast<char>(path[0] | 0x20);
  return path.size() > 1 && path[1] == ':' && letter >= 'a' && letter <= 'z';
}

Status CheckComponent(std::string_view component, std::string_view path) {
  if (component.empty()) return Fail("the entry ", Quoted(path), " has an empty name on its path");
  if (component == "." || component == "..")
    return Fail("the entry ", Quoted(path), " has ", Quoted(component), " on its path");
  if (component.size() > kLongestComponent) return Fail("the entry ", Quoted(path), " has too long a name");
  return {};
}

}  // namespace

std::optional<std::string_view> CurrentUnicodePath(const StoredName& stored) {
  constexpr std::size_t kNameAt = 5;
  const std::string_view field = stored.unicodePath.value_or(std::string_view());
  if (field.size() <= kNameAt || field[0] != 1) return std::nullopt;
  if (Load32(field.data() + 1) != Crc(stored.bytes)) return std::nullopt;
  return field.substr(kNameAt);
}

Result<std::optional<std::string>> DecodeName(const StoredName& stored) {
  const bool backslashes = WritesBackslashes(stored.host);
  std::optional<std::string> name;
  if (const auto unicode = CurrentUnicodePath(stored)) {
    if (!IsUtf8(*unicode)) return Fail("the entry ", Quoted(stored.bytes), " has a name that is no UTF-8");
    if (stored.utf8 && *unicode != stored.bytes)
      return Fail("the entry ", Quoted(stored.bytes), " has two names");
    name = std::string(*unicode);
  } else if (!IsAscii(stored.bytes)) {
    const bool valid = IsUtf8(stored.bytes);
    if (stored.utf8 && !valid)
      return Fail("the entry ", Quoted(stored.bytes), " has a name that is no UTF-8");
    const bool unixLike = stored.host == Host::Unix || stored.host == Host::Mac;
    if (!stored.utf8 && !(valid && unixLike)) name = FromCodePage437(stored.bytes);
  }
  if (backslashes && (name ? *name : stored.bytes).find('\\') != std::string_view::npos) {
    if (!name) name = std::string(stored.bytes);
    std::replace(name->begin(), name->end(), '\\', '/');
  }
  return name;
}

Status CheckPath(std::string_view path) {
  if (path.empty()) return Fail("an entry has no name");
  if (path.size() > kLongestPath) return Fail("the entry ", Quoted(path), " has too long a path");
  if (path.front() == '/') return Fail("the entry ", Quoted(path), " has an absolute name");
  if (IsDrive(path)) return Fail("the entry ", Quoted(path), " names a drive");
  if (HoldsControl(path)) return Fail("the entry ", Quoted(path), " has a control character in its name");

  std::string_view rest = path;
  if (rest.back() == '/') rest.remove_suffix(1);
  while (true) {
    const std::size_t slash = rest.find('/');
    Status status = CheckComponent(rest.substr(0, slash), path);
    if (!status.Ok() || slash == std::string_view::npos) return status;
    rest.remove_prefix(slash + 1);
  }
}

}  // namespace archive

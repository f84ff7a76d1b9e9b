// SPDX-License-Identifier: MIT
// From the bytes of a stored name to a path that may be created below a folder.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "archive/Result.h"
#include "archive/reading/ZipFormat.h"

namespace archive {

constexpr std::size_t kLongestComponent = 255;
constexpr std::size_t kLongestPath = 4095;
/// What lies in a top-level folder of this name is left out.
constexpr std::string_view kMetadataFolder = "__MACOSX";

/// How an entry stores its name.
struct StoredName {
  std::string_view bytes;
  Host host = Host::Dos;
  bool utf8 = false;
  /// The content of the Unicode path field, if the entry has one.
  std::optional<std::string_view> unicodePath;
};

/// The Unicode path field's name, as long as the field's checksum is that of the stored bytes.
std::optional<std::string_view> CurrentUnicodePath(const StoredName& stored);

/// The name in UTF-8 with "/" between components. Empty where the bytes can be taken as they are.
/// The Unicode path field counts only while its checksum is that of the stored bytes. Bytes of no stated
/// encoding are UTF-8 if a Unix or Mac system wrote them and they are valid, else code page 437. A system
/// of the DOS family may have written "\" for "/".
Result<std::optional<std::string>> DecodeName(const StoredName& stored);

/// Accepts a relative path without empty, "." and ".." components, control characters or a drive. One "/"
/// may stand at the end.
Status CheckPath(std::string_view path);

}  // namespace archive

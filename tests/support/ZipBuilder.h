// SPDX-License-Identifier: MIT
// Writes archives field by field, true or false. Shares nothing with the reader.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace ziptest {

std::string Le(std::uint64_t value, int bytes);
std::uint32_t Crc(const std::string& bytes);
std::string Deflate(const std::string& content);
/// An extra field with its head.
std::string Extra(std::uint16_t id, const std::string& body);

enum class Tail { None, Short, ShortMarked, Long, LongMarked };

/// What a header says of an entry. The builder fills it in truly; a case then changes what it likes.
struct Says {
  std::uint16_t flags = 0, method = 0;
  std::uint32_t crc = 0;
  std::uint64_t compressed = 0, size = 0, offset = 0;
  std::string name, extra;
  std::uint16_t disk = 0, nameLength = 0;
};

struct Item {
  std::string name{}, content = "content\n";
  std::uint32_t mode = 0100644;  // all of the Unix mode
  std::uint8_t host = 3;
  bool deflate = false;
  std::uint16_t flags = 0;
  Tail tail = Tail::None;
  std::string centralExtra{}, localExtra{};
  std::optional<std::string> packed{};  // instead of what the content packs to
  std::function<void(Says&)> central{}, local{};
  bool onlyLocal = false;
};

struct Ending {
  std::uint64_t countHere = 0, count = 0, size = 0, offset = 0;
  std::uint16_t disk = 0;
  std::string comment;
  bool zip64 = false;  // writes the record and its locator
  std::uint64_t count64 = 0, size64 = 0, offset64 = 0, place64 = 0;
};

struct Zip {
  std::vector<Item> items{};
  std::string before{};       // bytes in front of the archive
  bool countsBefore = false;  // offsets count them
  std::string between{};      // bytes in front of the directory
  std::function<void(Ending&)> ending{};

  std::string Bytes() const;
};

inline std::string ZipOf(std::vector<Item> items) {
  return Zip{.items = std::move(items)}.Bytes();
}
inline Item File(const std::string& name, const std::string& content = "content\n") {
  return {.name = name, .content = content};
}
inline Item Packed(const std::string& name, const std::string& content) {
  return {.name = name, .content = content, .deflate = true};
}
inline Item Folder(const std::string& name, std::uint32_t mode = 040755) {
  return {.name = name, .content = "", .mode = mode};
}
inline Item Link(const std::string& name, const std::string& target) {
  return {.name = name, .content = target, .mode = 0120777};
}

}  // namespace ziptest

// SPDX-License-Identifier: MIT
#include "platform/desktop/PropertyList.h"

#include <algorithm>
#include <string_view>
#include <utility>

namespace {

std::string WithoutComments(std::string_view xml) {
  constexpr std::string_view kBegin = "<!--", kEnd = "-->";
  std::string text;
  while (true) {
    const std::size_t begin = xml.find(kBegin);
    text += xml.substr(0, begin);
    const std::size_t end = begin == xml.npos ? begin : xml.find(kEnd, begin + kBegin.size());
    if (end == xml.npos) return text;
    xml.remove_prefix(end + kEnd.size());
  }
}

/// With the characters that the five entities of XML stand for.
std::string Decoded(std::string_view text) {
  constexpr std::pair<std::string_view, char> kEntities[] = {
      {"&amp;", '&'}, {"&lt;", '<'}, {"&gt;", '>'}, {"&quot;", '"'}, {"&apos;", '\''}};
  std::string decoded;
  while (!text.empty()) {
    std::size_t taken = 1;
    char character = text.front();
    for (const auto& [entity, meant] : kEntities) {
      if (!text.starts_with(entity)) continue;
      character = meant;
      taken = entity.size();
    }
    decoded += character;
    text.remove_prefix(taken);
  }
  return decoded;
}

bool IsPlainName(std::string_view name) {
  constexpr std::string_view kNever("/\0", 2);
  return name != "." && name != ".." && name.find_first_of(kNever) == name.npos;
}

}  // namespace

std::string ExecutableNameOfPropertyList(const std::string& xml) {
  constexpr std::string_view kKey = "<key>CFBundleExecutable</key>", kString = "<string>";
  const std::string text = WithoutComments(xml);
  const std::size_t key = text.find(kKey);
  if (key == text.npos) return "";
  std::string_view value(text);
  value.remove_prefix(key + kKey.size());
  value.remove_prefix(std::min(value.find_first_not_of(" \t\r\n"), value.size()));
  const std::size_t end = value.find("</string>");
  if (!value.starts_with(kString) || end == value.npos) return "";
  const std::string name = Decoded(value.substr(kString.size(), end - kString.size()));
  return IsPlainName(name) ? name : "";
}

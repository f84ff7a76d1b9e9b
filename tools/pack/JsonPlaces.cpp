// SPDX-License-Identifier: MIT
#include "pack/JsonPlaces.h"

#include <algorithm>
#include <nlohmann/json.hpp>

#include "base/Encoding.h"

namespace pack {

Place PlaceAt(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t lines = static_cast<std::size_t>(std::count(before.begin(), before.end(), '\n'));
  return {lines + 1, CharacterCount(before.substr(before.rfind('\n') + 1)) + 1};
}

std::string Located(const std::string& file, const Place& place, const std::string& sentence) {
  return file + ":" + std::to_string(place.line) + ":" + std::to_string(place.column) + ": " + sentence;
}

JsonPlaces::JsonPlaces(const std::string& text) : fText(text) {
  Value("");
}

Place JsonPlaces::Of(std::string path) const {
  while (!path.empty()) {
    const auto found = fPlaces.find(path);
    if (found != fPlaces.end()) return found->second;
    const std::size_t end = path.find_last_of(".[");
    path.erase(end == std::string::npos ? 0 : end);
  }
  return {};
}

/// Blanks and comments.
void JsonPlaces::Skip() {
  while (fAt < fText.size()) {
    if (fText.compare(fAt, 2, "//") == 0) {
      fAt = std::min(fText.find('\n', fAt), fText.size());
    } else if (fText.compare(fAt, 2, "/*") == 0) {
      fAt = std::min(fText.find("*/", fAt + 2), fText.size() - 2) + 2;
    } else if (std::string_view(" \t\r\n\xEF\xBB\xBF").find(fText[fAt]) != std::string_view::npos) {
      ++fAt;
    } else {
      return;
    }
  }
}

void JsonPlaces::Value(const std::string& path) {
  Skip();
  if (fAt == fText.size()) return;
  if (fText[fAt] == '{') {
    Members(path);
  } else if (fText[fAt] == '[') {
    Entries(path);
  } else if (fText[fAt] == '"') {
    String();
  } else {
    fAt = std::min(fText.find_first_of(",]} \t\r\n/", fAt), fText.size());
  }
}

void JsonPlaces::Members(const std::string& path) {
  ++fAt;
  for (Skip(); fText[fAt] != '}'; Skip()) {
    if (fText[fAt] == ',') {
      ++fAt;
      continue;
    }
    const std::size_t start = fAt;
    const std::string key = nlohmann::json::parse(String()).get<std::string>();
    const std::string member = path.empty() ? key : path + "." + key;
    if (!fPlaces.emplace(member, PlaceAt(fText, start)).second) fTwins.push_back(member);
    Skip();
    ++fAt;  // the colon
    Value(member);
  }
  ++fAt;
}

void JsonPlaces::Entries(const std::string& path) {
  ++fAt;
  std::size_t count = 0;
  for (Skip(); fText[fAt] != ']'; Skip()) {
    if (fText[fAt] == ',') {
      ++fAt;
      continue;
    }
    const std::string entry = path + "[" + std::to_string(count++) + "]";
    fPlaces.emplace(entry, PlaceAt(fText, fAt));
    Value(entry);
  }
  ++fAt;
}

/// The one that begins here, with its quotation marks.
std::string_view JsonPlaces::String() {
  const std::size_t start = fAt++;
  while (fText[fAt] != '"') fAt += fText[fAt] == '\\' ? 2 : 1;
  ++fAt;
  return std::string_view(fText).substr(start, fAt - start);
}

}  // namespace pack

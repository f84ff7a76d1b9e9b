// SPDX-License-Identifier: MIT
// Typed values out of the description.
#include "pack/Section.h"

#include <utility>

#include "pack/Files.h"
#include "pack/Refusal.h"
#include "pack/Text.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string CheckedText(const std::string& text, const std::string& name) {
  if (!DecodeUtf8(text)) throw Refusal(name, "is no UTF-8 text");
  if (text.find('\0') != std::string::npos) throw Refusal(name, "can't hold a NUL character");
  return WithLineFeeds(text);
}

std::string TextFile(const fs::path& file, const std::string& name) {
  constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";
  std::string text = ReadFile(name, file);
  if (text.starts_with(kByteOrderMark)) text.erase(0, kByteOrderMark.size());
  text = CheckedText(text, name);
  if (text.ends_with('\n')) text.pop_back();
  return text;
}

bool NamesPage(const fs::path& file) {
  const std::string extension = LowerAscii(file.extension().string());
  return extension == ".html" || extension == ".htm";
}

}  // namespace

std::string TextOf(const json& json, const std::string& name) {
  if (!json.is_string()) throw Refusal(name, "must be a string");
  return CheckedText(json.get<std::string>(), name);
}

Section::Section(const json& json, std::string name, fs::path folder)
    : fJson(json), fName(std::move(name)), fFolder(std::move(folder)) {
  if (!json.is_object()) throw Refusal(fName.empty() ? "The description" : fName, "must be an object");
}

std::string Section::Name(const std::string& key) const {
  return fName.empty() ? key : fName + "." + key;
}

const json* Section::Find(const std::string& key) {
  fKnown.insert(key);
  const auto found = fJson.find(key);
  return found == fJson.end() ? nullptr : &*found;
}

bool Section::Flag(const std::string& key, bool otherwise) {
  const json* value = Find(key);
  if (value != nullptr && !value->is_boolean()) throw Refusal(Name(key), "must be true or false");
  return value == nullptr ? otherwise : value->get<bool>();
}

std::int64_t Section::Number(const std::string& key, std::int64_t smallest, std::int64_t largest) {
  const json* value = Find(key);
  if (value == nullptr) return 0;
  // Beyond the signed range the library keeps a number unsigned, which the cast would turn negative.
  const bool fits = value->is_number_integer() &&
                    (!value->is_number_unsigned() || value->get<std::uint64_t>() <= INT64_MAX) &&
                    value->get<std::int64_t>() >= smallest && value->get<std::int64_t>() <= largest;
  if (!fits) {
    throw Refusal(Name(key), "must be a whole number from " + std::to_string(smallest) + " to " +
                                 std::to_string(largest));
  }
  return value->get<std::int64_t>();
}

std::string Section::Text(const std::string& key) {
  const json* value = Find(key);
  if (value == nullptr) return "";
  if (!value->is_object()) return TextOf(*value, Name(key));
  Section inner(*value, Name(key), fFolder);
  const fs::path file = inner.File("file");
  inner.Finish();
  if (file.empty()) throw Refusal(Name(key), "must be a string or name a \"file\"");
  return TextFile(file, Name(key));
}

Note Section::NoteText(const std::string& key) {
  const json* value = Find(key);
  if (value == nullptr || !value->is_object()) return {Text(key), false};
  Section inner(*value, Name(key), fFolder);
  if (const json* html = inner.Find("html")) {
    inner.Finish();
    return {TextOf(*html, inner.Name("html")), true};
  }
  return {Text(key), NamesPage(inner.File("file"))};
}

fs::path Section::Path(const std::string& key) {
  const json* value = Find(key);
  if (value == nullptr) return {};
  const std::string path = TextOf(*value, Name(key));
  if (path.empty()) throw Refusal(Name(key), "is an empty path");
  return fFolder / path;
}

fs::path Section::File(const std::string& key) {
  const fs::path path = Path(key);
  if (!path.empty() && !fs::is_regular_file(path))
    throw Refusal(Name(key), "names no file: " + path.string());
  return path;
}

fs::path Section::Directory(const std::string& key) {
  const fs::path path = Path(key);
  if (!path.empty() && !fs::is_directory(path)) throw Refusal(Name(key), "names no folder: " + path.string());
  return path;
}

void Section::Finish() const {
  for (const auto& [key, value] : fJson.items()) {
    if (!fKnown.contains(key)) throw Refusal(Name(key), "is no key of the description");
  }
}

}  // namespace pack

// SPDX-License-Identifier: MIT
// Typed values out of the description.
#include "pack/Section.h"

#include <algorithm>
#include <utility>

#include "base/Encoding.h"
#include "pack/Files.h"
#include "pack/Nearest.h"
#include "pack/Refusal.h"
#include "pack/Text.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

std::string CheckedText(const std::string& text, const std::string& name) {
  if (!IsUtf8(text)) throw Refusal(name, "is no UTF-8 text");
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

const json kNothing = json::object();

bool NamesPage(const fs::path& file) {
  const std::string extension = LowerAscii(file.extension().string());
  return extension == ".html" || extension == ".htm";
}

}  // namespace

std::string TextOf(const json& json, const std::string& name) {
  if (!json.is_string()) throw Refusal(name, "must be a string");
  return CheckedText(json.get<std::string>(), name);
}

Section::Section(const json& json, std::string name, fs::path folder, Problems& problems)
    : fJson(json.is_object() ? json : kNothing),
      fName(std::move(name)),
      fFolder(std::move(folder)),
      fProblems(problems) {
  if (!json.is_object()) problems.Add(fName.empty() ? "The description" : fName, "must be an object");
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
  if (value == nullptr) return otherwise;
  if (!value->is_boolean()) Refuse(key, "must be true or false");
  return *value == true;
}

std::int64_t Section::Number(const std::string& key, std::int64_t smallest, std::int64_t largest) {
  const json* value = Find(key);
  if (value == nullptr) return 0;
  // Beyond the signed range the library keeps a number unsigned, which the cast would turn negative.
  const bool fits = value->is_number_integer() &&
                    (!value->is_number_unsigned() || value->get<std::uint64_t>() <= INT64_MAX) &&
                    value->get<std::int64_t>() >= smallest && value->get<std::int64_t>() <= largest;
  if (fits) return value->get<std::int64_t>();
  Refuse(key, "must be a whole number from " + std::to_string(smallest) + " to " + std::to_string(largest));
  return 0;
}

std::string Section::Text(const std::string& key) {
  const json* value = Find(key);
  std::string text;
  if (value == nullptr) return text;
  if (!value->is_object()) {
    fProblems.Try([&] { text = TextOf(*value, Name(key)); });
    return text;
  }
  Section inner = Inner(key, *value);
  const bool named = inner.Find("file") != nullptr;
  const fs::path file = inner.File("file");
  inner.Finish();
  if (!named) Refuse(key, "must be a string or name a \"file\"");
  if (!file.empty()) fProblems.Try([&] { text = TextFile(file, Name(key)); });
  return text;
}

Note Section::NoteText(const std::string& key) {
  const json* value = Find(key);
  if (value == nullptr || !value->is_object()) return {Text(key), false};
  Section inner = Inner(key, *value);
  if (inner.Find("html") != nullptr) {
    const std::string page = inner.Text("html");
    inner.Finish();
    return {page, true};
  }
  const auto file = value->find("file");
  return {Text(key), file != value->end() && file->is_string() && NamesPage(file->get<std::string>())};
}

fs::path Section::Path(const std::string& key) {
  const json* value = Find(key);
  std::string path;
  if (value == nullptr || !fProblems.Try([&] { path = TextOf(*value, Name(key)); })) return {};
  if (path.empty()) Refuse(key, "is an empty path");
  return path.empty() ? fs::path() : fFolder / path;
}

fs::path Section::File(const std::string& key) {
  const fs::path path = Path(key);
  std::error_code error;
  if (path.empty() || fs::is_regular_file(path, error)) return path;
  Refuse(key, "names no file: " + path.string());
  return {};
}

fs::path Section::Directory(const std::string& key) {
  const fs::path path = Path(key);
  std::error_code error;
  if (path.empty() || fs::is_directory(path, error)) return path;
  Refuse(key, "names no folder: " + path.string());
  return {};
}

std::string Section::Word(const std::string& key, const std::vector<std::string>& known,
                          const std::string& why) {
  const std::string value = Text(key);
  const auto same = [&](const std::string& word) { return LowerAscii(word) == LowerAscii(value); };
  if (value.empty() || std::any_of(known.begin(), known.end(), same)) return value;
  Refuse(key, why + DidYouMean(value, known));
  return "";
}

void Section::Finish() {
  for (const auto& [key, value] : fJson.items()) {
    if (fKnown.contains(key)) continue;
    Refuse(key, "is no key " + (fName.empty() ? "of the description" : "that \"" + fName + "\" may have") +
                    DidYouMean(key, {fKnown.begin(), fKnown.end()}));
  }
}

}  // namespace pack

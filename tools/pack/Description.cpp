// SPDX-License-Identifier: MIT
// From JSON to a checked description.
#include "pack/Description.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <nlohmann/json.hpp>
#include <set>
#include <string_view>
#include <utility>

#include "pack/DescriptionParts.h"
#include "pack/Files.h"
#include "pack/Labels.h"
#include "pack/Refusal.h"
#include "pack/Section.h"
#include "pack/Text.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

Picture ReadPicture(Section& section, const std::string& key) {
  const fs::path file = section.File(key);
  return file.empty() ? Picture{} : LoadPng(section.Name(key), file);
}

// A requirement that the installer doesn't know would be met everywhere, so that a slip of the pen would
// go unnoticed.
template <std::size_t N>
std::string ReadKeyword(Section& section, const std::string& key, const std::array<const char*, N>& known) {
  const std::string value = section.Text(key);
  const auto same = [&](const char* keyword) { return LowerAscii(keyword) == LowerAscii(value); };
  if (value.empty() || std::any_of(known.begin(), known.end(), same)) return value;
  throw Refusal(section.Name(key),
                std::string("is none of the known ones, ") + known.front() + " to " + known.back());
}

void ReadUrl(Section& section, Description& to) {
  const json* url = section.Find("url");
  if (url == nullptr || !url->is_object()) {
    to.urlAddress = section.Text("url");
    return;
  }
  Section inner(*url, "url", section.Folder());
  to.urlAddress = inner.Text("address");
  to.urlText = inner.Text("text");
  inner.Finish();
}

void ReadPayload(Section& section, Description& to) {
  const json* payload = section.Find("payload");
  if (payload == nullptr) throw Refusal("payload", "is missing");
  Section inner(*payload, "payload", section.Folder());
  to.payload = ReadSource(inner);
  if (!to.payload.Given()) throw Refusal("payload", "must name a folder or a zip");
  const json* sizes = inner.Find("splitSizes");
  if (inner.Find("splitSize") != nullptr) {
    if (sizes != nullptr) throw Refusal("payload.splitSize", "can't stand beside splitSizes");
    to.split.sizes = {static_cast<std::uintmax_t>(inner.Number("splitSize", 1, INT64_MAX))};
    to.split.repeat = true;
  } else if (sizes != nullptr) {
    if (!sizes->is_array() || sizes->empty())
      throw Refusal("payload.splitSizes", "must be a list of numbers");
    for (const json& size : *sizes) {
      if (!size.is_number_unsigned() || size == 0)
        throw Refusal("payload.splitSizes", "must hold whole numbers above 0");
      to.split.sizes.push_back(size.get<std::uintmax_t>());
    }
  }
  inner.Finish();
}

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 32> text{};
  std::tm utc{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", gmtime_r(&now, &utc));
  return text.data();
}

void ReadTexts(Section& section, Description& to) {
  to.windowTitle = section.Text("windowTitle");
  to.message = section.Text("message");
  to.centerMessage = section.Flag("centerMessage");
  to.copyright = section.Text("copyright");
  ReadUrl(section, to);
  to.completionUrl = section.Text("completionURL");
  const std::string address = LowerAscii(to.completionUrl);
  if (!address.empty() && !address.starts_with("http://") && !address.starts_with("https://"))
    throw Refusal("completionURL", "must begin with http:// or https://");
  to.agreement = section.NoteText("agreement");
  to.info = section.NoteText("info");
  to.preInstallNotes = section.NoteText("preInstallNotes");
  to.postInstallNotes = section.NoteText("postInstallNotes");
  to.logo = ReadPicture(section, "logo");
  to.picture = ReadPicture(section, "picture");
  to.background = ReadPicture(section, "background");
  if (const json* labels = section.Find("labels")) to.labels = ReadLabels(*labels);
}

void ReadTarget(Section& section, Description& to) {
  constexpr std::array kSystems = {"MacOS10.10", "MacOS10.11", "MacOS10.12", "MacOS10.13", "MacOS10.14",
                                   "MacOS10.15", "MacOS11.0",  "MacOS11.1",  "MacOS11.2",  "MacOS11.3"};
  constexpr std::array kMemory = {"250MB", "500MB", "1GB", "2GB", "4GB", "8GB", "16GB", "32GB"};
  to.targetFolder = section.Text("targetFolder");
  if (to.targetFolder.empty()) throw Refusal("targetFolder", "must name a folder");
  CheckFolderName("targetFolder", to.targetFolder);
  to.applicationFolder = section.Flag("applicationFolder");
  to.patch = section.Flag("patch");
  to.promptToReplace = section.Flag("promptToReplace", true);
  to.minOs = ReadKeyword(section, "minOS", kSystems);
  to.minRam = ReadKeyword(section, "minRAM", kMemory);
}

// Comments are welcome in a file that people write; a key that comes twice is a slip.
json ParseJson(const fs::path& file) {
  std::vector<std::set<std::string>> open;
  const auto refuseTwins = [&](int, json::parse_event_t event, json& value) {
    if (event == json::parse_event_t::object_start) open.emplace_back();
    if (event == json::parse_event_t::object_end) open.pop_back();
    if (event == json::parse_event_t::key && !open.back().insert(value.get<std::string>()).second)
      throw Refusal(value.get<std::string>(), "stands twice in one object");
    return true;
  };
  if (!fs::is_regular_file(file)) throw Refusal(file.string(), "is no file");
  try {
    return json::parse(ReadFile("The description", file), refuseTwins, true, true);
  } catch (const json::parse_error& error) {
    const std::string message = error.what();
    throw Refusal(file.string(), "is no JSON: " + message.substr(message.find(']') + 2));
  }
}

}  // namespace

Description ReadDescription(const fs::path& file) {
  const json parsed = ParseJson(file);
  Section section(parsed, "", fs::absolute(file).parent_path());
  Description description;
  ReadTexts(section, description);
  ReadTarget(section, description);
  ReadPayload(section, description);
  description.choices = ReadItems(section, "choices", false);
  description.options = ReadItems(section, "options", true);
  if (description.patch && !(description.choices.empty() && description.options.empty()))
    throw Refusal(description.choices.empty() ? "options" : "choices",
                  "can't be offered by a patch, whose folder is gone when they would come");
  description.actions = ReadActions(section);
  description.before = ReadProgram(section, "executeBefore");
  description.after = ReadProgram(section, "executeAfter");
  ReadCleanup(section, description);
  description.timeStamp = section.Find("timeStamp") != nullptr ? section.Text("timeStamp") : Now();
  description.encryptionLength = section.Number("encryptionLength", 0, INT64_MAX);
  section.Finish();
  return description;
}

std::string PayloadFolder(const Description& description) {
  const std::string& target = description.targetFolder;
  return target.substr(target.rfind('/') + 1) + (description.patch ? "Patch" : "");
}

}  // namespace pack

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

#include "actions/ActionScript.h"
#include "engine/Target.h"
#include "pack/DescriptionParts.h"
#include "pack/Files.h"
#include "pack/Labels.h"
#include "pack/Notes.h"
#include "pack/Picture.h"
#include "pack/Refusal.h"
#include "pack/Section.h"
#include "pack/Text.h"
#include "package/RecordWriter.h"
#include "package/Requirements.h"
#include "util/Paths.h"
#include "util/Strings.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

void ReadPicture(Section& section, const std::string& key, std::string& pixels, std::int64_t& width,
                 std::int64_t& height) {
  const fs::path file = section.File(key);
  if (file.empty()) return;
  const Picture picture = LoadPng(section.Name(key), file);
  pixels = PixelString(picture);
  width = static_cast<std::int64_t>(picture.width);
  height = static_cast<std::int64_t>(picture.height);
}

// A requirement that the installer doesn't know would be met everywhere, so that a slip of the pen would
// go unnoticed.
std::string ReadKeyword(Section& section, const std::string& key, const std::vector<std::string>& known) {
  const std::string value = section.Text(key);
  const auto same = [&](const std::string& keyword) { return ViewConst::NonCaseMatch(keyword, value); };
  if (value.empty() || std::any_of(known.begin(), known.end(), same)) return value;
  throw Refusal(section.Name(key), "is none of the known ones, " + known.front() + " to " + known.back());
}

void ReadUrl(Section& section, InstallerRecord& to) {
  const json* url = section.Find("url");
  if (url == nullptr || !url->is_object()) {
    to.fURLActual = section.Text("url");
    return;
  }
  Section inner(*url, "url", section.Folder());
  to.fURLActual = inner.Text("address");
  to.fURLDisplayed = inner.Text("text");
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

std::string ReadNote(Section& section, const std::string& key) {
  return NoteText(section.Name(key), section.NoteText(key));
}

void ReadTexts(Section& section, InstallerRecord& to) {
  to.fWindowTitle = section.Text("windowTitle");
  to.fMessage = section.Text("message");
  to.fCenterMessage = section.Flag("centerMessage");
  to.fCopyright = section.Text("copyright");
  ReadUrl(section, to);
  to.fCompletionURL = section.Text("completionURL");
  const std::string address = LowerAscii(to.fCompletionURL);
  if (!address.empty() && !address.starts_with("http://") && !address.starts_with("https://"))
    throw Refusal("completionURL", "must begin with http:// or https://");
  to.fAgreement = ReadNote(section, "agreement");
  to.fInfo = ReadNote(section, "info");
  to.fPreInstallNotes = ReadNote(section, "preInstallNotes");
  to.fPostInstallNotes = ReadNote(section, "postInstallNotes");
  ReadPicture(section, "logo", to.fLogoPixelStr, to.fLogoWidth, to.fLogoHeight);
  ReadPicture(section, "picture", to.fPicturePixelStr, to.fPictureWidth, to.fPictureHeight);
  ReadPicture(section, "background", to.fBackgroundPixelStr, to.fBackgroundWidth, to.fBackgroundHeight);
  if (const json* labels = section.Find("labels")) to.fLabels = ReadLabels(*labels);
}

void ReadTarget(Section& section, InstallerRecord& to) {
  to.fTargetFolder = section.Text("targetFolder");
  if (to.fTargetFolder.empty()) throw Refusal("targetFolder", "must name a folder");
  CheckFolderName("targetFolder", to.fTargetFolder);
  to.fApplicationFolder = section.Flag("applicationFolder");
  to.fInstallationPatch = section.Flag("patch");
  to.fPromptToReplace = section.Flag("promptToReplace");
  to.fMinOS = ReadKeyword(section, "minOS", VersionKeywords());
  to.fMinRAM = ReadKeyword(section, "minRAM", MemoryKeywords());
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

std::string ListOf(const std::vector<Item>& items) {
  return JoinItems({items.begin(), items.end()});
}

}  // namespace

Description ReadDescription(const fs::path& file) {
  const json parsed = ParseJson(file);
  Section section(parsed, "", fs::absolute(file).parent_path());
  Description description;
  InstallerRecord& record = description.record;
  ReadTexts(section, record);
  ReadTarget(section, record);
  ReadPayload(section, description);
  description.choices = ReadItems(section, "choices", false);
  description.options = ReadItems(section, "options", true);
  record.fInstallChoices = ListOf(description.choices);
  record.fInstallOptions = ListOf(description.options);
  if (record.fInstallationPatch && !(description.choices.empty() && description.options.empty()))
    throw Refusal(description.choices.empty() ? "options" : "choices",
                  "can't be offered by a patch, whose folder is gone when they would come");
  record.fPostCopy = JoinActions(ReadActions(section));
  description.before = ReadProgram(section, "executeBefore");
  description.after = ReadProgram(section, "executeAfter");
  record.fExecuteBeforeName = description.before.name;
  record.fExecuteAfterName = description.after.name;
  ReadCleanup(section, description);
  record.fTimeStamp = section.Find("timeStamp") != nullptr ? section.Text("timeStamp") : Now();
  record.fEncryptionLen = section.Number("encryptionLength", 0, INT64_MAX);
  section.Finish();
  for (const RecordFault& fault : WriteRecord(record).faults) throw Refusal(fault.field, fault.why);
  return description;
}

std::string PayloadFolder(const Description& description) {
  const InstallerRecord& record = description.record;
  return ViewConst::ExtractFileName(record.fTargetFolder) + (record.fInstallationPatch ? kPatchSuffix : "");
}

}  // namespace pack

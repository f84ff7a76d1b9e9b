// SPDX-License-Identifier: MIT
// From JSON to a checked description.
#include "pack/Description.h"

#include <algorithm>
#include <array>
#include <ctime>
#include <nlohmann/json.hpp>
#include <string_view>
#include <utility>

#include "actions/ActionScript.h"
#include "archive/planning/Plan.h"
#include "archive/reading/Names.h"
#include "base/Blanks.h"
#include "engine/Target.h"
#include "pack/Actions.h"
#include "pack/Addresses.h"
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
  section.Faults().Try([&] {
    const Picture picture = LoadPng(section.Name(key), file);
    pixels = PixelString(picture);
    width = static_cast<std::int64_t>(picture.width);
    height = static_cast<std::int64_t>(picture.height);
  });
}

// A requirement that the installer doesn't know would be met everywhere, so that a slip of the pen would
// go unnoticed.
std::string ReadKeyword(Section& section, const std::string& key, const std::vector<std::string>& known) {
  return section.Word(key, known, "is none of the known ones, " + known.front() + " to " + known.back());
}

std::string ReadNote(Section& section, const std::string& key) {
  std::string text;
  section.Faults().Try([&] { text = NoteText(section.Name(key), section.NoteText(key)); });
  return text;
}

void ReadUrl(Section& section, InstallerRecord& to) {
  const json* url = section.Find("url");
  if (url == nullptr) return;
  if (url->is_object()) {
    Section inner = section.Inner("url", *url);
    to.fURLActual = inner.Text("address");
    to.fURLDisplayed = inner.Text("text");
    inner.Finish();
  } else {
    to.fURLActual = section.Text("url");
  }
  const bool web = IsWebAddress(ViewConst::CompleteAddress(to.fURLActual)) && !IsMailAddress(to.fURLActual);
  if (!to.fURLActual.empty() && !web)
    section.Refuse(url->is_object() ? "url.address" : "url",
                   "must be a web address, such as https://example.com: " + to.fURLActual);
}

void ReadNotes(Section& section, InstallerRecord& to) {
  const std::size_t before = section.Faults().Count();
  to.fAgreement = ReadNote(section, "agreement");
  const bool read = section.Find("agreement") != nullptr && section.Faults().Count() == before;
  if (read && WithoutBlanksAround(to.fAgreement).empty())
    section.Refuse("agreement", "holds no text, so that nobody would be asked");
  to.fInfo = ReadNote(section, "info");
  to.fPreInstallNotes = ReadNote(section, "preInstallNotes");
  to.fPostInstallNotes = ReadNote(section, "postInstallNotes");
}

void ReadTexts(Section& section, InstallerRecord& to) {
  to.fWindowTitle = section.Text("windowTitle");
  to.fMessage = section.Text("message");
  to.fCenterMessage = section.Flag("centerMessage");
  to.fCopyright = section.Text("copyright");
  ReadUrl(section, to);
  to.fCompletionURL = section.Text("completionURL");
  if (!to.fCompletionURL.empty() && !IsWebAddress(to.fCompletionURL) && !IsMailAddress(to.fCompletionURL))
    section.Refuse("completionURL",
                   "must be \"http://\" or \"https://\" with a host, or \"mailto:\": " + to.fCompletionURL);
  ReadNotes(section, to);
  ReadPicture(section, "logo", to.fLogoPixelStr, to.fLogoWidth, to.fLogoHeight);
  ReadPicture(section, "picture", to.fPicturePixelStr, to.fPictureWidth, to.fPictureHeight);
  ReadPicture(section, "background", to.fBackgroundPixelStr, to.fBackgroundWidth, to.fBackgroundHeight);
  if (const json* labels = section.Find("labels")) to.fLabels = ReadLabels(*labels, section.Faults());
}

// By the rule of the engine, and by the expander's for the folder that its archive holds.
std::string TargetFault(const std::string& name, const std::string& top) {
  if (name.empty()) return "must name a folder";
  if (!IsTargetName(name))
    return "must name a folder, without \".\", \"..\", a \"/\" at an end and control characters";
  const archive::Status status = archive::CheckPath(top);
  if (!status.Ok()) return "can't be installed: " + status.Sentence();
  const bool kept = archive::IsStagingName(top) || top == archive::kMetadataFolder;
  return kept ? "is a name that archives keep for themselves" : "";
}

void ReadTarget(Section& section, Description& description) {
  InstallerRecord& to = description.record;
  to.fTargetFolder = section.Text("targetFolder");
  to.fApplicationFolder = section.Flag("applicationFolder");
  to.fInstallationPatch = section.Flag("patch");
  to.fPromptToReplace = section.Flag("promptToReplace", true);
  to.fMinOS = ReadKeyword(section, "minOS", VersionKeywords());
  to.fMinRAM = ReadKeyword(section, "minRAM", MemoryKeywords());
  const std::string fault = TargetFault(to.fTargetFolder, PayloadFolder(description));
  if (fault.empty()) return;
  section.Refuse("targetFolder", fault);
  to.fTargetFolder.clear();  // nothing more is told about it
}

std::uintmax_t PieceSize(Section& section, const std::string& key, const json& size) {
  constexpr std::uintmax_t kSmallest = 1'000'000;
  if (size.is_number_unsigned() && size >= kSmallest) return size.get<std::uintmax_t>();
  section.Refuse(key, "must be a number of bytes, 1000000 at least");
  return kSmallest;
}

void ReadSplit(Section& section, Split& to) {
  const json* size = section.Find("splitSize");
  const json* sizes = section.Find("splitSizes");
  if (size != nullptr && sizes != nullptr) section.Refuse("splitSize", "can't stand beside splitSizes");
  if (size != nullptr) to = {{PieceSize(section, "splitSize", *size)}, true};
  if (size != nullptr || sizes == nullptr) return;
  if (!sizes->is_array() || sizes->empty()) {
    section.Refuse("splitSizes", "must be a list of numbers");
    return;
  }
  for (const json& row : *sizes)
    to.sizes.push_back(PieceSize(section, "splitSizes[" + std::to_string(to.sizes.size()) + "]", row));
}

void ReadPayload(Section& section, Description& to) {
  const json* payload = section.Find("payload");
  if (payload == nullptr) section.Refuse("payload", "is missing");
  if (payload == nullptr) return;
  Section inner = section.Inner("payload", *payload);
  to.payload = ReadSource(inner);
  if (inner.Find("folder") == nullptr && inner.Find("zip") == nullptr)
    section.Refuse("payload", "must name a folder or a zip");
  ReadSplit(inner, to.split);
  inner.Finish();
}

std::string Now() {
  const std::time_t now = std::time(nullptr);
  std::array<char, 32> text{};
  std::tm utc{};
  std::strftime(text.data(), text.size(), "%Y-%m-%d %H:%M:%S", gmtime_r(&now, &utc));
  return text.data();
}

std::string ListOf(const std::vector<Item>& items) {
  return JoinItems({items.begin(), items.end()});
}

void ReadLists(Section& section, Description& to) {
  to.choices = ReadItems(section, "choices", false);
  to.options = ReadItems(section, "options", true);
  to.record.fInstallChoices = ListOf(to.choices);
  to.record.fInstallOptions = ListOf(to.options);
  if (to.record.fInstallationPatch && !(to.choices.empty() && to.options.empty()))
    section.Refuse(to.choices.empty() ? "options" : "choices",
                   "can't be offered by a patch, whose folder is gone when they would come");
}

// What the archives hold, and what is said of it.
void CheckArchives(const Description& description, const std::vector<std::string>& actions,
                   Problems& problems) {
  std::optional<Contents> payload;
  if (!description.record.fTargetFolder.empty())
    payload = ReadContents("payload", description.payload, PayloadFolder(description), problems);
  for (const auto& [key, items] :
       {std::pair{"choices", &description.choices}, std::pair{"options", &description.options}})
    for (std::size_t i = 0; i < items->size(); ++i)
      ReadContents(key + ("[" + std::to_string(i) + "]"), (*items)[i].archive, "", problems);
  const std::optional<Contents> cleanup =
      ReadContents("cleanup.program", description.cleanupProgram, "", problems);
  if (cleanup && !HoldsBundle(*cleanup))
    problems.Add("cleanup.program", "holds no application bundle, with its folder Contents");
  CheckActions(actions, payload, description.record.fInstallationPatch, problems);
  CheckPrograms(description, payload, problems);
}

Description ReadAll(Section& section) {
  Description description;
  InstallerRecord& record = description.record;
  ReadTexts(section, record);
  ReadTarget(section, description);
  ReadPayload(section, description);
  ReadLists(section, description);
  const std::vector<std::string> actions = ReadActions(section);
  record.fPostCopy = JoinActions(actions);
  description.before = ReadProgram(section, "executeBefore");
  description.after = ReadProgram(section, "executeAfter");
  record.fExecuteBeforeName = description.before.name;
  record.fExecuteAfterName = description.after.name;
  ReadCleanup(section, description);
  record.fTimeStamp = section.Find("timeStamp") != nullptr ? section.Text("timeStamp") : Now();
  record.fEncryptionLen = section.Number("encryptionLength", 0, INT64_MAX);
  section.Finish();
  for (const RecordFault& fault : WriteRecord(record).faults) section.Refuse(fault.field, fault.why);
  CheckArchives(description, actions, section.Faults());
  return description;
}

// Comments are welcome in a file that people write.
json ParseJson(const fs::path& file, const std::string& text) {
  try {
    return json::parse(text, nullptr, true, true);
  } catch (const json::parse_error& error) {
    // The library's own line and column stand in front of the last ": " but what it has read.
    const std::string message = error.what();
    const std::size_t column = message.find("column");
    const std::size_t start = message.find(": ", column == std::string::npos ? 0 : column) + 2;
    throw Mistakes(Located(file.string(), PlaceAt(text, std::max<std::size_t>(error.byte, 1) - 1),
                           "This is no JSON: " + message.substr(start) + "."));
  }
}

}  // namespace

Description ReadDescription(const fs::path& file) {
  if (!fs::is_regular_file(file)) throw Refusal(file.string(), "is no file");
  const std::string text = ReadFile("The description", file);
  const json parsed = ParseJson(file, text);
  const JsonPlaces places(text);
  Problems problems;
  for (const std::string& twin : places.Twins()) problems.Add(twin, "stands twice in one object");
  Section section(parsed, "", fs::absolute(file).parent_path(), problems);
  Description description = parsed.is_object() ? ReadAll(section) : Description{};
  problems.Tell(file, places);
  return description;
}

std::string PayloadFolder(const Description& description) {
  const InstallerRecord& record = description.record;
  return ViewConst::ExtractFileName(record.fTargetFolder) + (record.fInstallationPatch ? kPatchSuffix : "");
}

}  // namespace pack

// SPDX-License-Identifier: MIT
// A publisher's programs around the install, and the cleanup.
#include <array>

#include "actions/Specifiers.h"
#include "pack/DescriptionParts.h"
#include "pack/Nearest.h"
#include "pack/Refusal.h"
#include "pack/Text.h"
#include "package/CleanupMode.h"
#include "platform/desktop/Launch.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

// The file itself, or what the installer would start in a bundle.
void CheckFile(const std::string& field, const fs::path& file) {
  if (!fs::exists(file)) throw Refusal(field, "names nothing that exists: " + file.string());
  if (PlanLaunch(FolderItem(file.string())).kind == LaunchKind::kProgram) return;
  throw Refusal(field, fs::is_directory(file)
                           ? "names no application bundle with a program in Contents/MacOS: " + file.string()
                           : "names no program; it must be executable (chmod +x): " + file.string());
}

}  // namespace

Program ReadProgram(Section& section, const std::string& key) {
  Program program;
  const json* value = section.Find(key);
  if (value == nullptr) return program;
  if (value->is_object()) {
    Section inner = section.Inner(key, *value);
    if (inner.Find("file") != nullptr) {
      program.file = (section.Folder() / inner.Text("file")).lexically_normal();
      if (!program.file.has_filename()) program.file = program.file.parent_path();
      section.Faults().Try([&] { CheckFile(inner.Name("file"), program.file); });
    }
    program.name = inner.Find("name") != nullptr ? inner.Text("name") : program.file.filename().string();
    inner.Finish();
  } else {
    program.name = section.Text(key);
  }
  if (program.name.empty()) section.Refuse(key, "must name a program");
  const bool specifier = ResolveSpecifier(program.name, {}).has_value();
  if (!specifier && program.name.find('/') != std::string::npos)
    section.Refuse(
        key, "must be a file's name, or begin with UserAccount/, InstallFolder/, FixedPath/ or SetupFolder/");
  if (specifier && !program.file.empty())
    section.Refuse(key, "names a place outside the bundle, and a file for it");
  return program;
}

void CheckPrograms(const Description& description, const std::optional<Contents>& payload,
                   Problems& problems) {
  const SpecifierFolders folders{"/home", "/target", "/setup/"};
  const std::string target = folders.target + "/";
  for (const char* key : {"executeBefore", "executeAfter"}) {
    const bool before = std::string_view(key) == "executeBefore";
    const Program& program = before ? description.before : description.after;
    const Program& other = before ? description.after : description.before;
    if (program.name.empty() || !program.file.empty()) continue;
    const std::optional<ResolvedSpecifier> resolved = ResolveSpecifier(program.name, folders);
    if (!resolved) {
      if (other.file.empty() || other.name != program.name)
        problems.Add(key, "names nothing in the package: \"" + program.name +
                              "\"; give its file, as in {\"file\": \"build/" + program.name + "\"}");
    } else if (!resolved->path.starts_with(target)) {
      if (!resolved->path.starts_with('/'))
        problems.Add(key, "must lead to a full path: \"" + program.name + "\"");
    } else if (before || description.record.fInstallationPatch) {
      problems.Add(key, before ? "can't count from InstallFolder/, where nothing is yet"
                               : "can't count from InstallFolder/, which is a patch's own and gone by then");
    } else if (payload) {
      const std::string path = resolved->path.substr(target.size());
      if (!HoldsProgram(*payload, path))
        problems.Add(key, payload->Find(path) ? "names something in the payload that isn't executable: \"" +
                                                    program.name + "\""
                                              : "names nothing that the payload holds: \"" + path + "\"" +
                                                    DidYouMean(path, payload->Paths()));
    }
  }
}

void ReadCleanup(Section& section, Description& to) {
  const json* cleanup = section.Find("cleanup");
  if (cleanup == nullptr) return;
  Section inner = section.Inner("cleanup", *cleanup);
  const json* mode = inner.Find("mode");
  if (mode != nullptr && mode->is_string()) {
    const std::string word = inner.Word("mode", {kCleanupModes.begin(), kCleanupModes.end()},
                                        "must be a number from 0 to 4 or one of the modes' names");
    for (std::size_t i = 0; i < kCleanupModes.size(); ++i)
      if (LowerAscii(kCleanupModes[i]) == LowerAscii(word)) to.record.fCleanup = static_cast<std::int64_t>(i);
  } else {
    to.record.fCleanup = inner.Number("mode", 0, 4);
  }
  if (const json* program = inner.Find("program")) {
    Section source = inner.Inner("program", *program);
    to.cleanupProgram = ReadSource(source);
    source.Finish();
  }
  inner.Finish();
}

}  // namespace pack

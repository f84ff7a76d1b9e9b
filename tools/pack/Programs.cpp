// SPDX-License-Identifier: MIT
// What runs around the copy: the action script, a publisher's programs, the cleanup.
#include <algorithm>
#include <array>

#include "actions/Specifiers.h"
#include "pack/DescriptionParts.h"
#include "pack/Refusal.h"
#include "pack/Text.h"
#include "package/CleanupMode.h"

namespace pack {
namespace {

namespace fs = std::filesystem;
using nlohmann::json;

bool IsSpecifier(const std::string& name) {
  return ResolveSpecifier(name, {}).has_value();
}

}  // namespace

std::vector<std::string> ReadActions(Section& section) {
  std::vector<std::string> actions;
  const json* list = section.Find("actions");
  if (list == nullptr) return actions;
  if (!list->is_array()) throw Refusal("actions", "must be a list of strings");
  for (const json& entry : *list) {
    const std::string field = "actions[" + std::to_string(actions.size()) + "]";
    actions.push_back(TextOf(entry, field));
    const std::size_t equals = actions.back().find('=');
    if (equals == 0 || equals == std::string::npos || equals + 1 == actions.back().size())
      throw Refusal(field, "must be a key, \"=\" and a value");
    if (actions.back().find('|') != std::string::npos) throw Refusal(field, "can't hold \"|\"");
    if (actions.back().find('=', equals + 1) != std::string::npos)
      throw Refusal(field, "can't hold a second \"=\", where its value would end");
  }
  return actions;
}

Program ReadProgram(Section& section, const std::string& key) {
  Program program;
  const json* value = section.Find(key);
  if (value == nullptr) return program;
  if (value->is_object()) {
    Section inner(*value, key, section.Folder());
    const json* file = inner.Find("file");
    if (file != nullptr) {
      program.file = (section.Folder() / TextOf(*file, inner.Name("file"))).lexically_normal();
      if (!program.file.has_filename()) program.file = program.file.parent_path();
      if (!fs::exists(program.file))
        throw Refusal(inner.Name("file"), "names nothing that exists: " + program.file.string());
    }
    program.name = inner.Find("name") != nullptr ? inner.Text("name") : program.file.filename().string();
    inner.Finish();
  } else {
    program.name = TextOf(*value, key);
  }
  if (program.name.empty()) throw Refusal(key, "must name a program");
  const bool specifier = IsSpecifier(program.name);
  if (!specifier && program.name.find('/') != std::string::npos)
    throw Refusal(
        key, "must be a file's name, or begin with UserAccount/, InstallFolder/, FixedPath/ or SetupFolder/");
  if (specifier && !program.file.empty())
    throw Refusal(key, "names a place outside the bundle, and a file for it");
  return program;
}

void ReadCleanup(Section& section, Description& to) {
  const json* cleanup = section.Find("cleanup");
  if (cleanup == nullptr) return;
  Section inner(*cleanup, "cleanup", section.Folder());
  const json* mode = inner.Find("mode");
  if (mode != nullptr && mode->is_string()) {
    const auto* found = std::find(kCleanupModes.begin(), kCleanupModes.end(), mode->get<std::string>());
    if (found == kCleanupModes.end())
      throw Refusal("cleanup.mode", "must be a number from 0 to 4 or one of the modes' names");
    to.record.fCleanup = std::distance(kCleanupModes.begin(), found);
  } else {
    to.record.fCleanup = inner.Number("mode", 0, 4);
  }
  if (const json* program = inner.Find("program")) {
    Section source(*program, "cleanup.program", section.Folder());
    to.cleanupProgram = ReadSource(source);
    source.Finish();
  }
  inner.Finish();
}

}  // namespace pack

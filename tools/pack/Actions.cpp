// SPDX-License-Identifier: MIT
#include "pack/Actions.h"

#include <filesystem>

#include "actions/ActionScript.h"
#include "pack/Nearest.h"
#include "pack/Refusal.h"
#include "platform/Brake.h"
#include "util/Paths.h"
#include "util/Places.h"
#include "util/Strings.h"

namespace pack {
namespace {

using nlohmann::json;
using Kind = Action::Kind;

const std::string kDeletes = "deletes";

std::string FieldOf(std::size_t index) {
  return "actions[" + std::to_string(index) + "]";
}

// Where one value more would have to stand there is none: the installer drops it.
void RefuseRest(const std::string& field, const std::string& text, const std::string& separator) {
  if (!ViewConst::NthField(text, separator, 3).empty())
    throw Refusal(field, "can't hold a second \"" + separator + "\", where its value would end");
}

std::string CheckedEntry(const std::string& field, const json& value) {
  const std::string entry = TextOf(value, field);
  if (entry.find(ActionScript::kSeparator) != std::string::npos) throw Refusal(field, "can't hold \"|\"");
  RefuseRest(field, entry, "=");
  const Action action = ActionScript(entry).Next().value_or(Action{});
  if (action.kind == Kind::Invalid) throw Refusal(field, "must be a key, \"=\" and a value");
  if (action.kind == Kind::PreInstallCopy) RefuseRest(field, ViewConst::NthField(entry, "=", 2), ";");
  return entry;
}

// A path outside of the target folder. "UserAccount/" counts from the user's home where the installer knows
// it.
void CheckPath(const std::string& field, const std::string& what, const std::string& path, bool fromHome) {
  const std::string kHome = "/home/user";
  const std::string full = fromHome ? ExpandUserAccount(path, kHome) : path;
  if (!full.starts_with('/'))
    throw Refusal(field, what + " \"" + path + "\", which must begin with \"/\"" +
                             (fromHome ? " or \"UserAccount/\"" : ""));
  std::string place = std::filesystem::path(full).lexically_normal().string();
  if (place.size() > 1 && place.ends_with('/')) place.pop_back();
  if (place == "/" || place == kHome || full.find('\n') != std::string::npos)
    throw Refusal(field, what + " \"" + path + "\", which names no item");
  if (what == kDeletes && IsFolderOfTheSystem(place))
    throw Refusal(field, what + " \"" + path + "\", which the installer leaves alone: it is the system's");
}

class Checker {
 public:
  Checker(const std::optional<Contents>& payload, bool patch) : fPayload(payload), fPatch(patch) {}

  void Check(const std::string& field, const Action& action) {
    switch (action.kind) {
      case Kind::Delete:
        return CheckPath(field, kDeletes, action.value, true);
      case Kind::CreateFolder:
        return CheckPath(field, "makes", action.value, true);
      case Kind::AllUsersFullAccess:
        return CheckPath(field, "opens", action.value, true);
      case Kind::PreInstallDelete:
        return CheckPath(field, kDeletes, action.value, false);
      case Kind::PreInstallCopy:
        CheckPath(field, "saves", action.source, false);
        return CheckPath(field, "copies to", action.destination, false);
      case Kind::ShellFile:
        CheckInstalled(field, action.value);
        fCommands = true;
        return;
      case Kind::Shell:
        fCommands = true;
        return;
      case Kind::Copy:
        return CheckCopy(field, action);
      case Kind::Invalid:
        return;
    }
  }

 private:
  void CheckCopy(const std::string& field, const Action& action) const {
    CheckInstalled(field, action.source);
    if (action.tested) CheckPath(field, "looks for", action.folderTest, true);
    CheckPath(field, "copies to", action.destination, true);
  }

  // Counted from the target folder, into which a command may have put something.
  void CheckInstalled(const std::string& field, const std::string& name) const {
    std::string meant = DidYouMean(name, ActionVerbs());
    if (fPatch && meant.empty())
      throw Refusal(field, "counts from the patch's folder, which is gone when it comes");
    std::string path = name;
    ViewConst::DropTrailingPathSeparator(path);
    const bool inner = ViewConst::IsInnerName(path);
    const bool unknown = (fCommands || !fPayload) && meant.empty();
    if (inner && (unknown || (fPayload && fPayload->Find(path)))) return;
    if (meant.empty() && fPayload) meant = DidYouMean(name, fPayload->Paths());
    throw Refusal(field, "names nothing that the payload holds: \"" + name + "\"" + meant);
  }

  const std::optional<Contents>& fPayload;
  const bool fPatch;
  bool fCommands = false;
};

}  // namespace

std::vector<std::string> ReadActions(Section& section) {
  std::vector<std::string> actions;
  const json* list = section.Find("actions");
  if (list == nullptr) return actions;
  if (!list->is_array()) section.Refuse("actions", "must be a list of strings");
  if (!list->is_array()) return actions;
  for (const json& value : *list) {
    actions.emplace_back();
    section.Faults().Try([&] { actions.back() = CheckedEntry(FieldOf(actions.size() - 1), value); });
  }
  return actions;
}

void CheckActions(const std::vector<std::string>& actions, const std::optional<Contents>& payload, bool patch,
                  Problems& problems) {
  Checker checker(payload, patch);
  for (std::size_t i = 0; i < actions.size(); ++i) {
    const std::optional<Action> action = ActionScript(actions[i]).Next();
    if (action) problems.Try([&] { checker.Check(FieldOf(i), *action); });
  }
}

}  // namespace pack

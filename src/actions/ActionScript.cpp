// SPDX-License-Identifier: MIT
#include "actions/ActionScript.h"

namespace {

using ViewConst::NonCaseMatch;
using ViewConst::NthField;

struct Keyword {
  std::string_view key;
  Action::Kind kind;
};

constexpr Keyword kKeywords[] = {{"delete", Action::Kind::Delete},
                                 {"shell", Action::Kind::Shell},
                                 {"shellfile", Action::Kind::ShellFile},
                                 {"createfolder", Action::Kind::CreateFolder},
                                 {"allusersfullaccess", Action::Kind::AllUsersFullAccess}};
constexpr std::string_view kPreInstallDelete = "preinstalldelete", kPreInstallCopy = "preinstallcopy";

/// dest, "[" test "]" dest, "{" dest "}", or both forms in a row, of which the second then decides.
Action ParseCopy(const std::string& source, std::string value) {
  Action action{.kind = Action::Kind::Copy, .source = source};
  if (value.starts_with('[')) {
    const std::string rest = value.substr(1);
    action.tested = true;
    action.folderTest = NthField(rest, "]", 1);
    value = NthField(rest, "]", 2);
  }
  if (value.starts_with('{')) {
    action.tested = false;
    action.onlyIfMissing = true;
    value = NthField(value.substr(1), "}", 1);
  }
  action.destination = value;
  return action;
}

Action ParseAction(std::string_view entry) {
  const std::string key = NthField(entry, "=", 1);
  const std::string value = NthField(entry, "=", 2);
  if (NonCaseMatch(key, kPreInstallDelete)) return {.kind = Action::Kind::PreInstallDelete, .value = value};
  if (NonCaseMatch(key, kPreInstallCopy)) {
    return {.kind = Action::Kind::PreInstallCopy,
            .source = NthField(value, ";", 1),
            .destination = NthField(value, ";", 2)};
  }
  if (key.empty() || value.empty()) return {};
  for (const Keyword& keyword : kKeywords)
    if (NonCaseMatch(key, keyword.key)) return {.kind = keyword.kind, .value = value};
  return ParseCopy(key, value);
}

}  // namespace

std::optional<Action> ActionScript::Next() {
  const std::optional<std::string_view> entry = fEmpty ? std::nullopt : fEntries.Next();
  return entry ? std::optional(ParseAction(*entry)) : std::nullopt;
}

std::vector<std::string> ActionVerbs() {
  std::vector<std::string> verbs{std::string(kPreInstallDelete), std::string(kPreInstallCopy)};
  for (const Keyword& keyword : kKeywords) verbs.emplace_back(keyword.key);
  return verbs;
}

std::string JoinActions(const std::vector<std::string>& entries) {
  std::string script;
  for (const std::string& entry : entries) {
    if (&entry != &entries.front()) script += ActionScript::kSeparator;
    script += entry;
  }
  return script;
}

std::string ExpandUserAccount(const std::string& path, const std::string& home) {
  constexpr std::string_view kPrefix = "UserAccount/";
  if (ViewConst::Pos(kPrefix, path) != 1) return path;
  return home + "/" + path.substr(kPrefix.size());
}

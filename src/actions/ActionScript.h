// SPDX-License-Identifier: MIT
// The publisher's action script: entries separated by "|", each "key=value". There is no escape.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "util/Strings.h"

struct Action {
  enum class Kind {
    Delete,              // value: a path
    Shell,               // value: a command
    ShellFile,           // value: a file's name in the target folder
    CreateFolder,        // value: a path
    AllUsersFullAccess,  // value: a path
    PreInstallDelete,    // value: a path
    PreInstallCopy,      // source and destination
    Copy,                // source, counted from the target folder, and destination
    Invalid              // an empty key, or a value that is missing
  };
  Kind kind = Kind::Invalid;
  std::string value{};
  std::string source{};
  std::string destination{};
  std::string folderTest{};    // copy only if this folder exists
  bool tested = false;         // folderTest counts
  bool onlyIfMissing = false;  // copy only if nothing stands at the destination
};

/// One entry a piece of the text; none for an empty text. Keywords are known in any case. What stands
/// behind a second "=" is dropped.
class ActionScript {
 public:
  explicit ActionScript(std::string_view text) : fEntries(text, kSeparator), fEmpty(text.empty()) {}
  std::optional<Action> Next();

  static constexpr std::string_view kSeparator = "|";

 private:
  ViewConst::FieldReader fEntries;
  bool fEmpty;
};

/// The keys that are no source of a copy.
std::vector<std::string> ActionVerbs();

/// The script of these entries, none of which may hold "|".
std::string JoinActions(const std::vector<std::string>& entries);

/// "UserAccount/x" counted from the home folder; any other path as it is.
std::string ExpandUserAccount(const std::string& path, const std::string& home);

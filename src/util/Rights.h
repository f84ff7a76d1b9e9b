// SPDX-License-Identifier: MIT
// Access for everybody, and hidden items. Nothing is reported: what can't be changed stays.
#pragma once

#include <optional>
#include <string>

#include "platform/FolderItem.h"

namespace ViewConst {

/// Everybody may read and write the item, and enter a folder. Not recursive. A program stays one, but one
/// with set-user-ID or set-group-ID is left alone, and so is a link with what it leads to.
void AllUsersFullAccess(const std::string& path);
void AllUsersFullAccessOnMac(const std::optional<FolderItem>& item);

/// Hides the item from file managers, if it exists.
void SetInvisible(const std::string& path);

}  // namespace ViewConst

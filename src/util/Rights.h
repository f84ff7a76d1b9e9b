// SPDX-License-Identifier: MIT
// Access for everybody, and hidden items. Nothing is reported: what can't be changed stays.
#pragma once

#include <optional>
#include <string>

#include "platform/FolderItem.h"

namespace ViewConst {

/// Folders get mode 0777, files 0666. Not recursive; the target of a link is left alone.
void AllUsersFullAccess(const std::string& path);

/// Adds read, write and execute for everybody to the item.
void AllUsersFullAccessOnMac(const std::optional<FolderItem>& item);

/// Hides the item from file managers, if it exists.
void SetInvisible(const std::string& path);

}  // namespace ViewConst

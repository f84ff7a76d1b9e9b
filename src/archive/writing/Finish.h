// SPDX-License-Identifier: MIT
// What comes after the files: links, empty folders, the folders' modes and times.
#pragma once

#include "archive/writing/FolderCache.h"
#include "archive/writing/Publisher.h"

namespace archive {

/// Links come when nothing will be written through any name any more. Folders get their mode, unless the
/// publisher still has to move them, and their time when nothing will be put into them any more.
Status FinishTree(const Plan& plan, int root, MadeFolders& made, const Publisher& publisher);

}  // namespace archive

// SPDX-License-Identifier: MIT
// Work on files and folders by path string. A path that is empty or relative names no item. Unless a
// function says otherwise, a failure is a false result or no effect, and nothing is shown. What must stay
// (MayGo) is neither deleted nor replaced by any of them.
#pragma once

#include <string>

namespace ViewConst {

/// True for any item of that name: a file, a folder, a link even if it leads nowhere.
bool FileExists(const std::string& path);

/// True for a folder, or a link to one, with or without closing "/".
bool DirectoryExists(const std::string& path);

/// Deletes a file, a link itself or an empty folder.
void DeleteFile(const std::string& path);

/// Moves the item to `newPath`, replacing what stands there, a folder with all that it holds. The new item
/// is in its place before the old one is gone. False when both paths are the same ignoring case, when there
/// is nothing to move, when `newPath` names no item, or when the item couldn't be moved.
bool RenameFile(const std::string& oldPath, const std::string& newPath);

/// Deletes a file or a whole folder, read-only items included. No link is followed.
void DeleteFolderOrApp(const std::string& path);

/// Deletes what stands at the path: a folder or bundle with all that it holds, or a file.
void DeleteItem(const std::string& path);

/// Copies a file or a whole folder, modes, times and links included. A link named as the source is
/// followed. What stands at `target`, unless it's a folder that holds something, is replaced once the whole
/// copy stands beside it. A copy that reports an error still counts when it has the source's length.
bool CopyFile(const std::string& source, const std::string& target);

/// As CopyFile, but a link named as the source arrives as a link, any error counts, and a folder at `target`
/// goes with all that it holds.
bool CopyFileB(const std::string& source, const std::string& target);

/// Copies what a folder holds into `target`, made if missing. A file that stands there is replaced by the
/// whole new one, or stays. Goes on past what can't be copied, and is false then. A folder is never copied
/// into itself.
bool CopyFolder(const std::string& source, const std::string& target);

/// Creates all missing folders of a path. With `showErrors`, an element that is no folder or can't be
/// made leaves its message pending in gConflictType and gErrorString.
void ForceDirectories(const std::string& path, bool showErrors);

/// All bytes of the file, or empty.
void DataFileRead(const std::string& path, std::string& text);

/// Replaces the file by one with these bytes; nothing when its folder is missing.
void DataFileWrite(const std::string& path, const std::string& text);

}  // namespace ViewConst

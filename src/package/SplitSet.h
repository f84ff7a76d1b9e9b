// SPDX-License-Identifier: MIT
// A Payload in pieces: "Data#1" in the bundle, "Data#2" and so on and "Data#End" in the source folder.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

inline constexpr const char* kFirstPiece = "Data#1";

struct FoundPiece {
  std::string folder;  // with closing "/"
  std::string path;
  bool last = false;
};

/// The piece number `index`, from 2, in the first of `folders` (with closing "/") that holds it. Where none
/// of them does, the last piece is the next one. None when no folder holds either.
std::optional<FoundPiece> FindPiece(const std::vector<std::string>& folders, int index,
                                    const std::function<bool(const std::string&)>& exists);

/// Can it be the text that names the source folder: an absolute path with closing "/", in one line?
bool IsFolderText(const std::string& text);

/// Leaves the source folder's path for a copy of the installer that will run in `copyFolder`, in a file of
/// mode 0600 beside it: for desktops on which the clipboard doesn't come through.
void WriteSourceFolderNote(const std::string& copyFolder, const std::string& sourceFolder);
/// Of the running copy; empty where there is none, or one that isn't this user's.
std::string ReadSourceFolderNote();

/// The folder, with closing "/", that the user has started the installer from, also for a copy of it.
std::string StartedFrom();

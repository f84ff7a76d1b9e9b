// SPDX-License-Identifier: MIT
// Path strings: native POSIX paths, "/" between elements; one that ends in "/" means a folder.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/FolderItem.h"

namespace ViewConst {

std::string GetPathSeparator();

/// The item's native path, for a folder always with a closing "/". Nothing for no item. Looks at the
/// disk to see whether the item is a folder.
std::string MyAbsolutePath(const std::optional<FolderItem>& item);

/// Up to and including the last "/"; empty without one.
std::string ExtractFilePath(const std::string& path);

/// The folder that holds the application or file, without closing "/": for a file inside a folder
/// named like a bundle, the folder above the bundle.
std::string MyExtractFilePath(const std::string& path);

/// Behind the last "/"; the whole text without one.
std::string ExtractFileName(const std::string& path);

/// The last extension with its "."; empty when the last element has none.
std::string ExtractFileExt(const std::string& path);

/// `ext` brings its own ".".
std::string ChangeFileExt(const std::string& path, const std::string& ext);

/// Takes one closing "/" off.
void DropTrailingPathSeparator(std::string& path);

/// The path in front of its n-th "/" (from 1); the whole of it when it has exactly n - 1; else empty.
std::string DirectoryPathExtract(const std::string& path, int n);

/// The Applications folder: the child of that name beside the "System" folder.
FolderItem GetApplicationFolder();

/// The running bundle: what stands in front of the last "/Contents" of the executable's path; the whole path
/// for a program outside a bundle.
std::string RunningBundle();

/// The folder that holds the running bundle, with closing "/". Of a program that the system has moved for
/// the user's safety gTranslocated is told first.
std::string GetApplicationPath();

/// Run by GetApplicationPath for a path that holds "AppTranslocation", unless
/// GlobalsKv::gIgnoreTranslocationError. It ends the program.
extern std::function<void()> gTranslocated;

/// The bundle of the program at `executable`: what stands in front of the first "/Contents"; the whole
/// path for a program outside a bundle.
std::string BundleOf(const std::string& executable);

/// The folder that holds the program's package in its child "Resources": up to and with the first
/// "/Contents"; the whole path for a program outside a bundle.
std::string ContentsFolder(const std::string& executable);

/// Where the running bundle holds its package. It need not exist.
FolderItem ResourceFolder();

/// Classic colon notation, counted from the start-up volume.
std::string CocoaToCarbonPath(const std::string& path);
/// The same with the start-up volume's name given.
std::string CocoaToCarbonPath(const std::string& path, const std::string& startupVolume);

}  // namespace ViewConst

// SPDX-License-Identifier: MIT
#include "util/Files.h"

#include "platform/BinaryStream.h"
#include "platform/FolderItem.h"
#include "platform/LiesIn.h"
#include "platform/Machine.h"
#include "platform/PrivateFolder.h"
#include "util/Brake.h"
#include "util/Debug.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"
#include "util/Strings.h"

namespace ViewConst {

using GlobalsKv::MyGetFolderItem;

namespace {

/// A copy that would put a folder into itself, or delete its own source first.
bool EatsItself(const FolderItem& source, const FolderItem& target) {
  const std::string place = target.Place();
  return LiesIn(source.ResolvedPath(), place) || LiesIn(source.Place(), place) ||
         LiesIn(place, source.ResolvedPath());
}

/// Which copies count although they report an error.
enum class Strictness { kAnyErrorCounts, kWholeLengthIsEnough };

/// A whole tree takes its time: it is made where the next run finds what a killed one has left.
bool CopyTreeIntoPlace(const FolderItem& source, const FolderItem& target) {
  const std::optional<PrivateFolder> place = PrivateFolder::Make(target.Parent());
  if (!place) return false;
  const FolderItem fresh = place->Item().Child("copy");
  return CopyFolder(source.NativePath(), fresh.NativePath()) &&
         fresh.MoveFileTo(target) == FolderItem::Moved::Yes;
}

/// The whole copy stands beside its place before it takes it: what was there goes for the new one only.
bool CopyIntoPlace(const FolderItem& source, const FolderItem& target, bool keepLink, Strictness strictness) {
  if (source.Directory() && !(keepLink && source.Alias())) return CopyTreeIntoPlace(source, target);
  const FolderItem fresh = target.FreshSibling();
  bool copied = source.CopyFileTo(fresh, keepLink);
  if (!copied && strictness == Strictness::kWholeLengthIsEnough)
    copied = fresh.IsFile() && fresh.Length() == source.Length();
  if (copied && fresh.MoveFileTo(target) == FolderItem::Moved::Yes) return true;
  // What can't be deleted is hidden; that the copy failed is told.
  if (fresh.Exists()) static_cast<void>(fresh.Delete());
  return false;
}

/// May something be copied to `target` in place of what stands there?
bool IsInTheWayForGood(const FolderItem& source, const FolderItem& target) {
  return EatsItself(source, target) || !MayGo(target.NativePath());
}

/// A file or a link that a folder holds.
bool CopyChild(const FolderItem& child, const FolderItem& copy) {
  if (copy.Exists())
    return (!copy.Directory() || copy.Alias()) && MayGo(copy.NativePath()) &&
           CopyIntoPlace(child, copy, true, Strictness::kAnyErrorCounts);
  if (child.CopyFileTo(copy, true)) return true;
  // Half a file passes for a whole one. Where there is none, nothing was begun.
  if (copy.Exists()) static_cast<void>(copy.Delete());
  return false;
}

void Pend(bool showErrors, int number, const std::string& detail) {
  if (!showErrors) return;
  GlobalsKv::gConflictType = 999;
  GlobalsKv::gErrorString = GlobalsKv::MyGetString(number) + detail;
}

}  // namespace

bool FileExists(const std::string& path) {
  const std::optional<FolderItem> item = MyGetFolderItem(path);
  return item && item->Exists();
}

bool DirectoryExists(const std::string& path) {
  std::string folder = path;
  DropTrailingPathSeparator(folder);
  const std::optional<FolderItem> item = MyGetFolderItem(folder);
  return item && item->Directory();
}

void DeleteFile(const std::string& path) {
  const std::optional<FolderItem> item = MyGetFolderItem(path);
  if (item && item->Exists() && MayGo(path)) static_cast<void>(item->Delete());
}

bool RenameFile(const std::string& oldPath, const std::string& newPath) {
  if (NonCaseMatch(oldPath, newPath)) return false;
  const std::optional<FolderItem> from = MyGetFolderItem(oldPath);
  const std::optional<FolderItem> to = MyGetFolderItem(newPath);
  if (!from || !to || !MayGo(newPath)) return false;
  const FolderItem::Moved moved = from->MoveFileTo(*to);
  if (moved != FolderItem::Moved::OtherFileSystem) return moved == FolderItem::Moved::Yes;
  if (!CopyIntoPlace(*from, *to, true, Strictness::kAnyErrorCounts)) return false;
  // What stays of the source is a second copy.
  static_cast<void>(from->DeleteTree());
  return true;
}

void DeleteFolderOrApp(const std::string& path) {
  const std::optional<FolderItem> item = MyGetFolderItem(path);
  if (item && item->Exists() && MayGo(path)) item->DeleteTree();
}

void DeleteItem(const std::string& path) {
  if (DirectoryExists(path))
    DeleteFolderOrApp(path);
  else
    DeleteFile(path);
}

bool CopyFile(const std::string& source, const std::string& target) {
  const std::optional<FolderItem> from = MyGetFolderItem(source);
  const std::optional<FolderItem> to = MyGetFolderItem(target);
  if (!from || !to || !from->Exists() || IsInTheWayForGood(*from, *to)) return false;
  // A folder that holds something is no place for anything else.
  if (to->Directory() && !to->Alias() && !to->Children().empty()) return false;
  return CopyIntoPlace(*from, *to, false, Strictness::kWholeLengthIsEnough);
}

bool CopyFileB(const std::string& source, const std::string& target) {
  const std::optional<FolderItem> from = MyGetFolderItem(source);
  const std::optional<FolderItem> to = MyGetFolderItem(target);
  if (!from || !to || !from->Exists() || IsInTheWayForGood(*from, *to)) return false;
  return CopyIntoPlace(*from, *to, true, Strictness::kAnyErrorCounts);
}

bool CopyFolder(const std::string& source, const std::string& target) {
  const std::optional<FolderItem> from = MyGetFolderItem(source);
  const std::optional<FolderItem> to = MyGetFolderItem(target);
  if (!from || !to) return false;
  if (!from->Directory()) return from->Exists();
  if (LiesIn(to->ResolvedPath(), from->ResolvedPath())) return false;
  // A link to a folder gives way: what is copied stays where its name says.
  if (to->Alias() && (!MayGo(target) || !to->Delete())) return false;
  const bool stood = to->Directory();
  bool complete = stood || to->CreateAsFolder();
  const std::string folder = MyAbsolutePath(to);
  const std::optional<std::vector<FolderItem>> children = from->List();
  if (!children) complete = false;
  for (const FolderItem& child : children.value_or(std::vector<FolderItem>())) {
    const FolderItem copy(folder + child.Name());
    if (child.Directory() && !child.Alias()) {
      if (!CopyFolder(child.NativePath(), copy.NativePath())) complete = false;
    } else if (!CopyChild(child, copy)) {
      complete = false;
    }
  }
  if (!stood) from->CopyAttributesTo(*to);
  return complete;
}

void ForceDirectories(const std::string& path, bool showErrors) {
  DebugConsole("FD0");
  std::string folder = path;
  DropTrailingPathSeparator(folder);
  if (folder.empty() || DirectoryExists(folder)) {
    DebugConsole("FD1");
    return;
  }
  GlobalsKv::gConflictType = 0;
  DebugConsole("FD2");
  for (int n = 2;; ++n) {
    const std::string prefix = DirectoryPathExtract(folder, n);
    DebugConsole("FD4");
    if (prefix.empty()) break;
    const std::optional<FolderItem> item = MyGetFolderItem(prefix);
    DebugConsole("FD4.1");
    if (!item) break;
    if (item->Exists() && !item->Directory()) {
      DebugConsole("FD4.2");
      Pend(showErrors, 36, prefix);
      break;
    }
    if (!item->Exists()) static_cast<void>(item->CreateAsFolder());
    DebugConsole("FD4.3");
    if (!item->Exists()) {
      DebugConsole("FD5");
      Pend(showErrors, 34, GlobalsKv::gLineBreak + GlobalsKv::gLineBreak + prefix);
      break;
    }
    DebugConsole("FD6");
  }
  DebugConsole("FD7");
}

void DataFileRead(const std::string& path, std::string& text) {
  text.clear();
  const std::optional<FolderItem> item = MyGetFolderItem(path);
  if (!item) return;
  if (std::optional<BinaryStream> file = BinaryStream::Open(*item)) text = file->ReadAll();
}

void DataFileWrite(const std::string& path, const std::string& text) {
  const std::optional<FolderItem> item = MyGetFolderItem(path);
  if (!item || !item->Parent().Directory() || !MayGo(path)) return;
  std::optional<BinaryStream> file = BinaryStream::Create(*item);
  // Callers can't be told; who reads the file sees what there is.
  if (file) static_cast<void>(file->Write(text));
}

}  // namespace ViewConst

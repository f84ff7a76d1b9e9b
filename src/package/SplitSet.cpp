// SPDX-License-Identifier: MIT
#include "package/SplitSet.h"

#include <algorithm>

#include "platform/BinaryStream.h"
#include "util/Files.h"
#include "util/Paths.h"

namespace {

constexpr const char* kNote = "SourceFolder";
constexpr unsigned kOwnerOnly = 0600;

}  // namespace

std::optional<FoundPiece> FindPiece(const std::vector<std::string>& folders, int index,
                                    const std::function<bool(const std::string&)>& exists) {
  for (const bool last : {false, true}) {
    for (const std::string& folder : folders) {
      const std::string path = folder + "Data#" + (last ? "End" : std::to_string(index));
      if (exists(path)) return FoundPiece{folder, path, last};
    }
  }
  return std::nullopt;
}

bool IsFolderText(const std::string& text) {
  const auto isControl = [](char byte) { return static_cast<unsigned char>(byte) < 32; };
  return text.starts_with('/') && text.ends_with('/') && std::none_of(text.begin(), text.end(), isControl);
}

void WriteSourceFolderNote(const std::string& copyFolder, const std::string& sourceFolder) {
  const FolderItem note = FolderItem(copyFolder).Child(kNote);
  std::optional<BinaryStream> file = BinaryStream::Create(note);
  // The clipboard tells as well; where neither does, the user is asked.
  if (file && note.SetPermissions(kOwnerOnly)) static_cast<void>(file->Write(sourceFolder));
}

std::string StartedFrom() {
  const std::string noted = ReadSourceFolderNote();
  return IsFolderText(noted) ? noted : ViewConst::GetApplicationPath();
}

std::string ReadSourceFolderNote() {
  const FolderItem note = FolderItem(ViewConst::GetApplicationPath()).Child(kNote);
  std::string text;
  if (note.IsFile() && note.IsOwn()) ViewConst::DataFileRead(note.NativePath(), text);
  return text;
}

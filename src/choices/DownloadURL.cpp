// SPDX-License-Identifier: MIT
// An option's archive from the web: fetched, put down for as long as it is expanded, expanded.
#include <algorithm>

#include "http/Requests.h"
#include "platform/BinaryStream.h"
#include "platform/Dialogs.h"
#include "platform/Machine.h"
#include "session/TessarineStubWindow.h"
#include "util/Archives.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"
#include "util/Places.h"

namespace {

constexpr int kRequestSeconds = 60;
constexpr std::size_t kSmallestArchive = 10'000;  // bytes; what is shorter is some page

/// Writes a new file, in place of a plain file of that name and of nothing else.
bool PutDown(const std::string& body, const FolderItem& archive) {
  if (archive.Exists() && !archive.IsFile()) return false;
  std::optional<BinaryStream> file = BinaryStream::Create(archive);
  if (!file) return false;
  constexpr std::size_t kPiece = 4U << 20;
  bool written = true;
  for (std::size_t at = 0; written && at < body.size(); at += kPiece) {
    written = file->Write(body.data() + at, std::min(kPiece, body.size() - at));
    Machine::Current().Yield();
  }
  if (file->Close() && written) return true;
  static_cast<void>(archive.Delete());  // half an archive; why it failed is told
  return false;
}

}  // namespace

bool TessarineStubWindow::DownloadURL(const std::string& url, const std::string& fileName,
                                      const std::string& folder, bool /*staged*/) {
  const FolderItem archive = FolderItem(ViewConst::MyExtractFilePath(folder)).Child(fileName);
  {
    // Gone from memory before the archive is expanded.
    const std::string body = GlobalsKv::HttpGet(url, kRequestSeconds);
    if (body.size() < kSmallestArchive) {
      MessageBox("Setup file download failed.");
      return false;
    }
    if (!ViewConst::IsInnerName(fileName) || !PutDown(body, archive)) {
      MessageBox("Install of download failed.  Check account permissions.");
      return false;
    }
  }
  const bool expanded = ViewConst::ZipFileToFolder(archive.NativePath(), folder, false);
  static_cast<void>(archive.Delete());  // this run's own; a second run replaces it
  return expanded;
}

// SPDX-License-Identifier: MIT
// The pieces of a split set become one archive; the user changes discs between them.
#include "dialogs/Posing.h"
#include "package/SplitSet.h"
#include "platform/Application.h"
#include "platform/BinaryStream.h"
#include "platform/Machine.h"
#include "platform/Shell.h"
#include "platform/WaitCursor.h"
#include "session/TessarineStubWindow.h"
#include "util/Files.h"
#include "util/GlobalsKv.h"
#include "util/Paths.h"

namespace {

bool KeepWindowsAlive() {
  Machine::Current().Yield();
  return !Machine::Current().Ending();
}

/// The folders that the started installer may have lain in, as it has told: by the file beside this copy,
/// which is meant for no other, and by the clipboard, which anybody may have taken since.
std::vector<std::string> SourceFolders() {
  std::vector<std::string> folders;
  for (const std::string& text : {ReadSourceFolderNote(), Machine::Current().ClipboardText()})
    if (IsFolderText(text)) folders.push_back(text);
  return folders;
}

bool Append(const std::string& piece, BinaryStream& archive) {
  std::optional<BinaryStream> source = BinaryStream::Open(FolderItem(piece));
  return source && archive.WriteAllOf(*source, KeepWindowsAlive);
}

}  // namespace

bool TessarineStubWindow::CombineSplitSetup(const std::string& firstPiecePath,
                                            const std::string& outputPath) {
  const FolderItem output(outputPath);
  const bool joined = JoinPieces(firstPiecePath, output);
  // Half an archive is of no use to anybody and takes room on a disk that may be full.
  if (!joined && output.IsFile()) ViewConst::DeleteFile(outputPath);
  return joined;
}

bool TessarineStubWindow::JoinPieces(const std::string& firstPiecePath, const FolderItem& output) {
  const WaitCursor cursor;
  const std::vector<std::string> folders = SourceFolders();
  std::optional<BinaryStream> archive = BinaryStream::Create(output);
  if (!archive || !Append(firstPiecePath, *archive)) return false;
  for (int index = 2;; ++index) {
    std::optional<FoundPiece> piece = FindPiece(folders, index, ViewConst::FileExists);
    // The first piece came from the bundle, which lay where the others are, or on a disc that goes now.
    if (index == 2 && !folders.empty()) EjectIfDisc(piece ? piece->folder : folders.front());
    while (!piece) {
      if (!AskForNextDisc()) {
        Application::Quit(0);
        return false;
      }
      piece = FindPiece(folders, index, ViewConst::FileExists);
    }
    if (!Append(piece->path, *archive)) return false;
    EjectIfDisc(piece->folder);
    if (piece->last) return archive->Close();
    if (!KeepWindowsAlive()) return false;
  }
}

bool TessarineStubWindow::AskForNextDisc() {
  return GlobalsKv::YesNoDlg(
      CustomLabel("Insert next CD.  When you see the CD icon, click YES to continue or NO to quit.",
                  LabelText(LabelId::NextDisc)));
}

bool TessarineStubWindow::SourceFolderIsCD(const std::string& path) {
  return Machine::Current().IsDisc(FolderItem(path));
}

void TessarineStubWindow::EjectIfDisc(const std::string& folder) {
  fDisc = folder;
  if (SourceFolderIsCD(folder)) EjectCD();
}

void TessarineStubWindow::EjectCD() {
  // Which device it is the program finds out by itself; without it the user presses the button.
  Shell().Execute("eject " + FolderItem(fDisc).ShellPath());
}

// SPDX-License-Identifier: MIT
#include "support/TestMachine.h"

#include <algorithm>

#include "platform/BinaryStream.h"

namespace {

class ScriptedExpansion : public Expansion {
 public:
  ScriptedExpansion(const TestMachine::Archive& archive, const FolderItem& item)
      : fArchive(archive), fItem(item) {}
  bool Running() override {
    if (++fAsked == 3 && fArchive.work) fArchive.work(fItem);
    return fAsked < 3;
  }
  double Done() const override { return fAsked < 3 ? 0.25 * fAsked : 1; }
  bool Succeeded() const override { return fArchive.succeeds; }
  std::string Reason() const override { return fArchive.reason; }
  void Stop() override {}

 private:
  TestMachine::Archive fArchive;
  FolderItem fItem;
  int fAsked = 0;
};

}  // namespace

TestMachine::TestMachine(const TemporaryTree& tree) : fTree(tree) {
  for (const char* folder : {"home/Desktop", "temporary", "Applications"}) tree.Folder(folder);
  fExecutable = tree.Path("media/Setup.app/Contents/MacOS/TessarineStub");
  Machine::Install(this);
}

void TestMachine::DoEvents(int milliseconds) {
  fMilliseconds += std::max(milliseconds, 1);
  Yield();
}

bool TestMachine::InstalledMemory(std::int64_t& megabytes) {
  Note("asks for the memory");
  if (!fMemory) return PosixMachine::InstalledMemory(megabytes);
  megabytes = *fMemory;
  return true;
}

bool TestMachine::SystemVersion(std::int64_t& major, std::int64_t& minor) {
  if (fVersion) std::tie(major, minor) = *fVersion;
  return fVersion.has_value();
}

bool TestMachine::Launch(const FolderItem& item) {
  Note("launches " + item.NativePath());
  fLaunched.push_back(item.NativePath());
  return item.Exists();
}

void TestMachine::ExpandPackage(const FolderItem& archive, const FolderItem& folder) {
  Note("expands the archive");
  fExpanded.push_back(BinaryStream::Open(archive)->ReadAll());
  if (!fHelpers.empty()) {
    PosixMachine::ExpandPackage(archive, folder);
    return;
  }
  if (fArchive.watched)
    fExpansion = std::make_shared<ScriptedExpansion>(fArchive, folder);
  else if (fArchive.work)
    fArchive.work(folder);
}

// SPDX-License-Identifier: MIT
// Patches: what they change in an installation, what they leave alone, and what fails by name.
#include <sys/stat.h>

#include "engine/PatchNames.h"
#include "session/SessionTest.h"

TEST(PatchNames, LoseTheirFirstMarker) {
  const std::tuple<const char*, const char*, bool> rows[] = {{"\u00E9*dElEtE*\u00E9", "\u00E9\u00E9", true},
                                                             {"*delete**Delete*x", "*Delete*x", true},
                                                             {"*Delete *", "*Delete *", false}};
  for (const auto& [item, name, deletes] : rows) {
    EXPECT_EQ(ReadPatchName(item).name, name);
    EXPECT_EQ(ReadPatchName(item).deletes, deletes) << item;
  }
}

class Patches : public SessionTest {
 protected:
  Patches() {
    fPackage.data[2] = "1";
    fPackage.data[7] = "1";  // a patch asks nothing
    fPackage.textData[13] = "1";
    fMachine.fArchive.work = nullptr;
  }
  void Installed(const std::string& name, unsigned mode = 0644) const {
    fTree.Write("Applications/Demo/" + name, "old", mode);
  }
  /// An item of the patch folder, which is there when the archive has been expanded.
  void Brings(const std::string& name, unsigned mode = 0644) {
    fItems.push_back([=, this](const std::string& patch) { fTree.Write(patch + name, "new", mode); });
  }
  void BringsLink(const std::string& name, const std::string& target) {
    fItems.push_back([=, this](const std::string& patch) { fTree.Link(patch + name, target); });
  }
  void RunPatch() {
    fMachine.fArchive.work = [this](const FolderItem& folder) {
      EXPECT_FALSE(fTree.Has("Applications/DemoPatch")) << "left by an earlier run";
      for (const auto& item : fItems) item(In(folder, "DemoPatch") + "/");
      fs::permissions(fTree.Folder(In(folder, "DemoPatch")), fs::perms(0755));
    };
    Run();
  }

  std::vector<std::function<void(const std::string& patch)>> fItems;
};

TEST_F(Patches, NeedTheirInstallationAndTheirFolder) {
  ExpectInstallPressed();
  fScript.ExpectMessage("Patch Failed.  No installation folder exists.");
  RunInVain();
  Installed("kept");
  ExpectInstallPressed();
  fScript.ExpectMessage("Patch Not Found\n\nPatch folder not created at specified location.");
  Run();
  EXPECT_EQ(fTree.Look("Applications"), Items("Demo/|Demo/kept: old"));
}

TEST_F(Patches, MergeFileByFile) {
  for (const std::string& name :
       Words("kept|same|Sub/kept|Sub/same|Sub/Gone/deep/file|gone.txt|Gone/file|full/kept|"
             "file to folder|.dot|listed|real|Sub/Full/kept"))
    Installed(name);
  Installed("tool", 0755);
  Installed("frozen", 0444);
  fTree.Link("Applications/Demo/alias", "real");
  fTree.Link("Applications/Demo/Inside", "Sub");
  fTree.Write("outside/file", "kept");
  fTree.Link("Applications/Demo/out", fTree.Path("outside"));
  fTree.Write("Applications/DemoPatch/stale", "left by a run that was cut short");
  for (const std::string& name :
       Words("same|new|Sub/same|Sub/new|Far/away/new|Inside/through|frozen|alias|*Delete*gone.txt|"
             "Gone*delete*/ignored|Sub/*DELETE*Gone/x|none*Delete*|Sub/None*Delete*/x|.dot|listed|"
             ".Folder/seen|listed*Delete*|.dot*Delete*|*Delete*.dot|file to folder/new|full*Delete*|"
             "out*Delete*/x"))
    Brings(name);
  Brings("tool", 0700);
  BringsLink("link", "real");
  fItems.push_back([this](const std::string& patch) {
    fTree.Folder(patch + "Empty/deep");
    fTree.Write(patch + ".hidden", "listed\nlisted*Delete*\n");
  });
  bool hidden = false;
  fMachine.fPump = [&] {
    hidden = hidden || fTree.Read("Applications/.hidden") == "DemoPatch\n";
    fToolkit.DoEvents(0);
  };
  ExpectInstallPressed();
  fScript.ExpectMessage("Patch Failed: " + fTree.Path("Applications/Demo/file to folder/new"));
  RunPatch();
  EXPECT_EQ(fTree.Look("Applications"),
            Items("Demo/|Demo/kept: old|Demo/same: new|Demo/new: new|Demo/Sub/|Demo/Sub/kept: old|"
                  "Demo/Sub/same: new|Demo/Sub/new: new|Demo/Sub/through: new|Demo/Sub/Full/|"
                  "Demo/Sub/Full/kept: old|Demo/Far/|Demo/Far/away/|Demo/Far/away/new: new|"
                  "Demo/Inside: link to Sub|Demo/frozen: new|Demo/alias: new|Demo/real: old|Demo/full/|"
                  "Demo/full/kept: old|Demo/file to folder: old|Demo/.dot: old|Demo/.Folder/|"
                  "Demo/.Folder/seen: new|Demo/listed: old|Demo/tool: file 700 new|Demo/link: link to real"));
  EXPECT_EQ(fTree.Look("outside"), (Contents{{"file", "file 644 kept"}}));
  EXPECT_TRUE(hidden) << "while it is merged";
  EXPECT_GE(fMachine.Ticks(), 2 * 60) << "the removal begins two seconds behind the merge";
}

TEST_F(Patches, NeverLeaveTheInstallation) {
  Installed("Sub/kept");
  fTree.Write("outside/file", "kept");
  fTree.Link("Applications/Demo/exit", fTree.Path("outside"));
  fTree.Link("Applications/Demo/up", "..");
  fTree.Write("Applications/Other/kept", "kept");
  const auto look = [this] { return std::pair(fTree.Look("Applications"), fTree.Look("outside")); };
  const auto before = look();
  // What the patch brings, and what is told to have failed. A file named with a leading "." isn't taken.
  const char* const rows[][2] = {{"*Delete*", ""},
                                 {"*Delete*/x", ""},
                                 {"Sub/.*Delete*./x", "Sub/.."},
                                 {"Sub/.*Delete*.", nullptr},
                                 {"exit/file", "exit/file"},
                                 {"exit/*Delete*file", "exit/file"},
                                 {"up/Other*Delete*/x", "up/Other"}};
  for (const auto& [name, failing] : rows) {
    fItems.clear();
    Brings(name);
    ExpectInstallPressed();
    if (failing != nullptr)
      fScript.ExpectMessage("Patch Failed: " + fTree.Path("Applications/Demo/") + failing);
    RunPatch();
    EXPECT_EQ(look(), before) << name;
  }
}

TEST_F(Patches, AFolderThatStaysIsToldInTheEnd) {
  if (::geteuid() != 0) GTEST_SKIP() << "needs root: mounts";
  Installed("kept");
  Brings("new");
  std::optional<SmallDisk> disk;
  fMachine.fPump = [&] {
    if (!disk && fTree.Has("Applications/DemoPatch"))
      disk.emplace(fTree.Folder("Applications/DemoPatch/disk"), 64);
    fToolkit.DoEvents(0);
  };
  ExpectInstallPressed();
  fScript.ExpectMessage("Unable to delete the patch folder.\n\n" + fTree.Path("Applications/DemoPatch"));
  RunPatch();
  EXPECT_EQ(fTree.Read("Applications/Demo/new"), "new");
  EXPECT_TRUE(fMachine.Ticks() >= 30 * 60 && fMachine.Ticks() < 60 * 60);
}

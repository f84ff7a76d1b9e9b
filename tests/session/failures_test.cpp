// SPDX-License-Identifier: MIT
// What stands after an install that fails, with the real expansion program on real folders.
#include <sys/mount.h>
#include <sys/stat.h>

#include "session/SessionTest.h"
#include "support/ZipBuilder.h"

using ziptest::File;
using ziptest::ZipOf;

class Failures : public SessionTest {
 protected:
  Failures() {
    fMachine.fHelpers = fs::path(DITTO_PROGRAM).parent_path();
    fPackage.data[2] = "1";
    fPackage.textData[6] = "|||||||||||||It failed";
    fPackage.payload = Sound();
  }

  static std::string Sound() { return ZipOf({File("Demo/new", std::string(200'000, 'n'))}); }

  /// One that the structure of which says nothing of its damage.
  static std::string Damaged() {
    std::string archive = Sound();
    archive[archive.size() / 2] ^= 1;
    return archive;
  }

  void StandIn(const std::string& script) {
    fTree.Write("helpers/ditto", "#!/bin/sh\n" + script + "\n", 0755);
    fMachine.fHelpers = fTree.Path("helpers");
  }
};

TEST_F(Failures, LeaveWhatStoodThereAndNothingElse) {
  const std::string kNone = "The archive holds no folder named Demo.";
  const std::string kEnded = "The expansion ended before its time.";
  const struct {
    const char* why;
    std::string payload, reason;
    std::function<void()> prepare{};
  } rows[] = {
      {"a piece is missing", Sound().substr(0, 100'000) + Sound().substr(150'000),
       "The archive's directory is not where its end record says."},
      {"damaged inside", Damaged(), "The checksum of the entry \"Demo/new\" is wrong."},
      {"leads out", ZipOf({File("../out")}), "The entry \"../out\" has \"..\" on its path."},
      {"two that differ in case", ZipOf({File("DEMO/file"), File("demo/file")}), kNone},
      {"a second folder", ZipOf({File("Demo/new"), File("Bar/file")}),
       "The archive holds more than the folder Demo."},
      {"a file of that name", ZipOf({File("Demo")}), kNone},
      {"no helper", Sound(), "The expansion program can't be started.",
       [this] { fMachine.fHelpers = fTree.Path("none"); }},
      {"killed while it looks", Sound(), kEnded, [this] { StandIn("kill -9 $$"); }},
      {"killed at work", Sound(), kEnded,
       [this] {
         StandIn(
             "case \"$*\" in *--plan*) exit 0;; esac\ncd \"$9\" && mkdir Demo && : > Demo/half; kill -9 $$");
       }},
      {"says that all is well and does nothing", Sound(), kNone, [this] { StandIn("exit 0"); }},
  };
  for (const auto& row : rows) {
    fs::remove_all(fTree.Path("Applications"));
    for (const char* file : {"Applications/Demo.zip", "Applications/Demo/old"}) fTree.Write(file, "kept");
    const Contents stood = fTree.Look("Applications");
    fMachine.fHelpers = fs::path(DITTO_PROGRAM).parent_path();
    if (row.prepare) row.prepare();
    fPackage.payload = row.payload;
    ExpectInstallPressed();
    fScript.ExpectMessage("It failed\n\n" + row.reason);
    Run(row.why);
    EXPECT_EQ(fTree.Look("Applications"), stood) << row.why;
  }
}

TEST_F(Failures, ANameThatOnlyLooksAnotherTakesThePlaceOfTheOldOne) {
  const std::pair<std::string, std::string> rows[] = {{"Caf\u00E9", "CAFe\u0301"},
                                                      {"Cafe\u0301", "Caf\u00E9"},
                                                      {std::string(255, 'n'), std::string(255, 'n')}};
  for (const auto& [name, brought] : rows) {
    fTree.Write("Applications/" + name + "/old", "old");
    fPackage.textData[7] = name;
    fPackage.payload = ZipOf({File("__MACOSX/._new"), File(brought + "/new", "new")});
    ExpectInstallPressed();
    Run(name);
    EXPECT_EQ(fTree.Look("Applications"), (Contents{{name, "folder 755"}, {name + "/new", "file 644 new"}}));
    fs::remove_all(fTree.Path("Applications/" + name));
  }
}

TEST_F(Failures, WithRoomForOneOnlyTheOldOneGoesForASoundArchive) {
  fPackage.data[2] = "";
  const SmallDisk disk(fTree.Folder("disk"), 320);
  if (!disk.Mounted()) GTEST_SKIP() << "needs root: mounts";
  fTree.Write("disk/Demo/old", std::string(200'000, 'o'));
  const Contents stood = fTree.Look("disk");
  const auto install = [this](const std::string& message) {
    ExpectInstallPressed();
    Expect({.window = "SelectFolderDialog", .choose = fTree.Path("disk")});
    if (!message.empty()) fScript.ExpectMessage("It failed\n\n" + message);
    Run(message);
  };
  fPackage.payload = Damaged();
  install("The checksum of the entry \"Demo/new\" is wrong.");
  EXPECT_EQ(fTree.Look("disk"), stood);
  fPackage.payload = Sound();
  {
    const std::optional<FolderLock> other = FolderLock::Share(FolderItem(fTree.Path("disk")));
    install("Another installation is at work in " + fTree.Path("disk") + ".");
    EXPECT_EQ(fTree.Look("disk"), stood) << "another run counts on the same room";
  }
  fMachine.fInUse = fTree.Path("disk/Demo");
  install("There is room for one only, and a program uses " + fTree.Path("disk/Demo") + ".");
  fMachine.fInUse = "";
  fPackage.payload = ZipOf({File("Demo/new", std::string(900'000, 'n'))});
  install("There is not enough room on the disk: 1 MB are needed, 0 MB are free.");
  EXPECT_EQ(fTree.Look("disk"), stood);
  fPackage.payload = Sound();
  // A signal comes as soon as the old one has gone: the new one stands all the same.
  fMachine.fPump = [this] {
    if (!fTree.Has("disk/Demo")) Application::Quit(0);
    fToolkit.DoEvents(0);
  };
  install("");
  EXPECT_EQ(fTree.Look("disk").size(), 2U);
  EXPECT_EQ(fTree.Read("disk/Demo/new").size(), 200'000U);
}

TEST_F(Failures, WhatKilledRunsLeftIsEndedByTheNext) {
  const auto leave = [this](const char* kind, const char* file) {
    const std::string name = std::string("Applications/.tessarine-") + kind + "-0123456789abcdef";
    fTree.Write(name + "/Demo/" + file, "old");
    fs::permissions(fTree.Path(name), fs::perms(0700));
  };
  leave("install", "half");
  leave("aside", "old");
  fTree.Write("Applications/.tessarine-install-open/kept", "not one of ours: others may look into it");
  fPackage.payload = "no archive";
  for (const char* why : {"the one that stood aside is back", "what the killed run had put there stays"}) {
    ExpectInstallPressed();
    Expect({.window = "MessageBox", .press = "OKBtn"});
    Run();
    EXPECT_EQ(fTree.Look("Applications"),
              Items(".tessarine-install-open/|.tessarine-install-open/kept: file 644 not one of ours: others "
                    "may look into it|Demo/|Demo/old: old"))
        << why;
    leave("aside", "older");
  }
}

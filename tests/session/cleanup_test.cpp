// SPDX-License-Identifier: MIT
// The removal of the installer, from the question to the program that carries it out.
#include <signal.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstring>
#include <fstream>

#include "session/SessionTest.h"
#include "support/ZipBuilder.h"

class Cleanup : public SessionTest {
 protected:
  Cleanup() {
    fPackage.data[2] = "1";
    fTree.Link("program", CLEANUP_PROGRAM);
  }
  /// Once in its place, the way the runtime starts it.
  std::string Line() const {
    return Here("HOME='@/home' '@/temporary/") + fProgram + Here("' 2>>'@/temporary/said'");
  }
  void LayOut() {
    for (const char* gone : {"media", "Applications/Demo", "temporary"}) fs::remove_all(fTree.Path(gone));
    fTree.Folder("temporary");
    fTree.Write("media/other", "somebody's");
    fTree.Link("media/Setup.app/Contents/MacOS/ditto", DITTO_PROGRAM);
    fTree.Write("media/Setup.app/Contents/Resources/Data3",
                ScrambledByHand(ziptest::ZipOf({{.name = "Contents/MacOS/PostInstallCleanup",
                                                 .content = fTree.Read("program"),
                                                 .mode = 0100755}})));
    fMachine.fLaunched.clear();
  }

  const std::string fProgram = "PostInstallCleanup.app/Contents/MacOS/PostInstallCleanup";
  const std::string fOrder = "temporary/PostInstallCleanup.data";
};

TEST_F(Cleanup, EachModeTakesAwayWhatItNames) {
  const auto *bundle = "DeleteFile=@/media/Setup.app", *folder = "DeleteFolder=@/media";
  const auto *askBundle = "Delete this Setup file when finished?",
             *askFolder = "Delete folder containing Setup file when finished?";
  const struct {
    const char *mode, *question, *answer, *order;
    const char* installsInto = "";
    const char* script = "";
  } rows[] = {
      // Before a run that keeps other folders.
      {"2", "", "", bundle, "", "createfolder=@/media/made"},
      {"1", "", "", bundle},
      {"2", "", "", folder},
      {"3", askBundle, "Btn2", bundle},
      {"3", askBundle, "Btn3", ""},
      {"4", askFolder, "Btn2", folder},
      {"4", askFolder, "Btn3", ""},
      {"2", "", "", bundle, "media"},
      {"0", "", "", ""},
      {"5", "", "", ""},
  };
  for (const auto& row : rows) {
    SCOPED_TRACE(std::string(row.mode) + row.answer + row.installsInto);
    LayOut();
    fPackage.textData[29] = Here(row.script);
    fPackage.textData[30] = row.mode;
    fPackage.data[2] = *row.installsInto == '\0' ? "1" : "";
    ExpectInstallPressed();
    if (*row.installsInto != '\0')
      Expect({.window = "SelectFolderDialog", .choose = fTree.Path(row.installsInto)});
    if (*row.question != '\0')
      Expect({.window = "MessageText", .press = row.answer, .look = [&row](QWidget& window) {
                EXPECT_EQ(Find<QPlainTextEdit>(window, "MessageText").toPlainText(), row.question);
              }});
    Run();
    if (*row.order == '\0') {
      EXPECT_TRUE(fTree.Look("temporary").empty() && fMachine.fLaunched.empty());
      continue;
    }
    EXPECT_EQ(fMachine.fLaunched, std::vector{fTree.Path("temporary/PostInstallCleanup.app")});
    EXPECT_EQ(fTree.Read(fOrder), Here(row.order));
    Contents expected = fTree.Look();
    const std::string doomed = std::strchr(row.order, '@') + 2;
    std::erase_if(expected, [&](const auto& item) {
      return item.first == fOrder || (item.first + "/").starts_with(doomed + "/");
    });
    EXPECT_EQ(std::system(Line().c_str()), 0);
    fs::remove(fTree.Path("temporary/said"));
    EXPECT_EQ(fTree.Look(), expected);
  }
}

TEST_F(Cleanup, NoHalfOrderIsGivenAndWhatCannotGoIsTold) {
  fPackage.textData[30] = "1";
  LayOut();
  fTree.Folder(fOrder);  // can't be written
  ExpectInstallPressed();
  fScript.ExpectMessage("PostInstallCleanup Extraction Failed 2.");
  Run();
  EXPECT_TRUE(fMachine.fLaunched.empty());

  LayOut();
  fTree.Write(fOrder, "DeleteFile=/of another run");
  fMachine.fMilliseconds = 0;
  ExpectInstallPressed();
  Run();
  EXPECT_GE(fMachine.Ticks(), 5 * 60) << "the other one has its time";
  EXPECT_EQ(fTree.Read(fOrder), "DeleteFile=" + fTree.Path("media/Setup.app"));

  LayOut();
  if (::geteuid() != 0) GTEST_SKIP() << "needs root: other users' items";
  fPackage.Write(fTree, "media/Setup.app");
  for (const char* open : {"", "media", "Applications"}) fs::permissions(fTree.Path(open), fs::perms(0777));
  const OrdinaryUser user(fTree.Path("temporary"));
  ExpectInstallPressed();
  fScript.ExpectMessage("This can't be deleted: " + fTree.Path("media/Setup.app"));
  RunFromDisk();
  EXPECT_TRUE(fMachine.fLaunched.empty());
}

TEST_F(Cleanup, TheProgramHasObjectionsOfItsOwn) {
  fTree.Write("temporary/" + fProgram, fTree.Read("program"), 0755);
  for (const char* file : {"home/mine", "locked/item/file", "sub/mixed/theirs/file", "sub/mixed/file"})
    fTree.Write(file, "kept");
  const bool root = ::geteuid() == 0;
  if (root)
    static_cast<void>(std::system(("cd " + fTree.Path() +
                                   " && chown -R 65534 . && chown 0 locked && "
                                   "chown -R 0 sub/mixed/theirs")
                                      .c_str()));
  fs::permissions(fTree.Path("locked"), fs::perms(0555));
  fs::permissions(fTree.Path(), fs::perms(0755));
  const std::string user = root ? "setpriv --reuid 65534 --clear-groups env " : "env ";
  const std::pair<const char*, const char*> rows[] = {
      {"DeleteFolder=@/home", "it is or holds what must stay"},
      {"DeleteFile=@/locked/item", "its folder can't be changed"},
      {"DeleteFile=@/sub/../sub", "the order is unclear"},
      {"", "the order is unclear"},
      {"DeleteFolder=@/sub/mixed", "something in it can't be removed"}};
  std::vector<Contents> before;
  for (const auto& [order, reason] : rows) {
    if (std::string(order).ends_with("mixed") && !root) continue;  // one's own can always be removed
    fs::remove(fTree.Path("temporary/said"));
    fTree.Write(fOrder, Here(order));
    if (before.empty())
      for (const char* folder : {"home", "locked", "sub"}) before.push_back(fTree.Look(folder));
    EXPECT_NE(std::system((user + Line()).c_str()), 0) << order;
    EXPECT_NE(fTree.Read("temporary/said").find(reason), std::string::npos) << fTree.Read("temporary/said");
    EXPECT_EQ((std::vector{fTree.Look("home"), fTree.Look("locked"), fTree.Look("sub")}), before) << order;
    EXPECT_FALSE(fTree.Has(fOrder)) << "an order is given once";
  }
}

TEST_F(Cleanup, TheProgramWaitsForTheInstallersEnd) {
  fTree.Write("temporary/" + fProgram, fTree.Read("program"), 0755);
  fTree.Write(fOrder, "DeleteFile=" + fTree.Path("media/Setup.app"));
  const std::string installer = fTree.Folder("media/Setup.app/Contents/MacOS") + "/Stub";
  fs::copy_file("/bin/sh", installer);
  ASSERT_EQ(::mkfifo(fTree.Path("end").c_str(), 0600), 0);
  const std::string script =
      Line() + " & echo $! > '" + fTree.Path("number") + "'; read x < '" + fTree.Path("end") + "'";
  fTree.Write("script", script);
  ASSERT_EQ(std::system(("'" + installer + "' '" + fTree.Path("script") + "' &").c_str()), 0);
  while (fTree.Has(fOrder) || fTree.Read("number").find('\n') == std::string::npos) ::usleep(1000);
  const pid_t cleaner = std::stoi(fTree.Read("number"));
  // Asleep, look after look: it has nothing to do until then.
  for (int asleep = 0; asleep < 20 && ::kill(cleaner, 0) == 0; ::usleep(1000)) {
    std::ifstream facts("/proc/" + std::to_string(cleaner) + "/stat");
    std::string number, name, state;
    facts >> number >> name >> state;
    asleep = state == "S" ? asleep + 1 : 0;
  }
  EXPECT_TRUE(fTree.Has("media/Setup.app/Contents/MacOS/Stub"));
  std::ofstream(fTree.Path("end")) << "now\n";
  for (int look = 0; look < 10'000 && fTree.Has("media/Setup.app"); ++look) ::usleep(1000);
  EXPECT_FALSE(fTree.Has("media/Setup.app"));
  EXPECT_TRUE(fTree.Has("media"));
}

// SPDX-License-Identifier: MIT
// One run that does all there is to do, and everything it did in its order.
#include "session/SessionTest.h"
#include "support/ZipBuilder.h"

class Order : public SessionTest {
 protected:
  Order() {
    fMachine.fNote = [this](const std::string& what) { Note(what); };
    fScript.fNote = fMachine.fNote;
    fMachine.fPump = [this] {
      Note("");
      fToolkit.DoEvents(0);
    };
  }
  /// Whole seconds that have been waited, then what has come and gone outside the bundle, then `what`.
  void Note(std::string what) {
    if (fMachine.fExecuting) return;
    const Contents stands = Standing();
    if (what.empty() && stands == fStood) return;
    if (const std::int64_t seconds = (fMachine.Ticks() - fAt) / 60; seconds > 0)
      fLog += "waits " + std::to_string(seconds) + " s\n";
    fAt = fMachine.Ticks();
    for (const auto& [name, item] : fStood)
      if (!stands.contains(name)) fLog += "- " + name + "\n";
    for (const auto& [name, item] : stands)
      if (!fStood.contains(name)) fLog += "+ " + name + "\n";
    fStood = stands;
    const QString plain = QString::fromStdString(what)
                              .replace(QString::fromStdString(fTree.Path()), "@")
                              .replace(QRegularExpression("install-[0-9a-f]{16}"), "install-*");
    if (!what.empty()) fLog += plain.toStdString() + "\n";
  }
  Contents Standing() const {
    Contents all = fTree.Look();
    std::erase_if(all, [](const auto& item) {
      return item.first.starts_with("media") || item.first.find(".tessarine") != std::string::npos ||
             item.first.find(".app/") != std::string::npos;
    });
    return all;
  }

  std::string fLog;
  std::int64_t fAt = 0;
  Contents fStood;
};

TEST_F(Order, EverythingHappensInItsTurn) {
  fTree.Link("media/Setup.app/Contents/MacOS/ditto", DITTO_PROGRAM);
  for (const char* program : {"media/Before", "media/Setup.app/Contents/Resources/After"})
    fTree.Write(program, "", 0755);
  fTree.Write("media/Setup.app/Contents/Resources/one.zip", ziptest::ZipOf({ziptest::File("one")}));
  fTree.Write("media/Setup.app/Contents/Resources/two.zip", ziptest::ZipOf({ziptest::File("two")}));
  fTree.Write("media/Setup.app/Contents/Resources/Data3",
              ScrambledByHand(ziptest::ZipOf({ziptest::File("Contents/MacOS/Cleaner")})));
  for (const char* file : {"chosen/Demo/old", "early", "late", "saved"}) fTree.Write(file, "");
  fPackage.data[3] = "After";
  fPackage.data[7] = "1";
  fPackage.data[8] = "SetupFolder/Before";
  fPackage.textData = {{1, "a"},
                       {7, "Demo"},
                       {9, "Main"},
                       {22, "1,one.zip,Sub"},
                       {23, "2,two.zip,Sub"},
                       {25, "1GB"},
                       {26, "http://done"},
                       {27, "n"},
                       {28, "r"},
                       {30, "3"}};
  fPackage.textData[29] = Here(
      "shell=: first|preinstalldelete=@/early|preinstallcopy=@/saved;@/copy|delete=@/late|"
      "createfolder=@/made|content=@/content|shell=: last|absent=/x");
  fMachine.fMemory = 1000;
  fMachine.fProgram = [](std::int64_t ticks) -> std::string {
    return ticks < 5 * 60 ? "TessarineWait" : ticks < 8 * 60 ? "TessarineDone:Ready." : "";
  };
  fScript.ExpectMessage("Ready.");
  ExpectInstallPressed();
  Expect({.window = "Pre-Installation Notes", .press = "OKBtn"});
  Expect({.window = "License Agreement", .press = "OKBtn"});
  Expect({.window = "Pick One Choice", .press = "ContinueBtn"});
  Expect({.window = "Select Options", .press = "ContinueBtn", .look = [](QWidget& dialog) {
            Find<QCheckBox>(dialog, "OptionCheckBox0").click();
          }});
  Expect({.window = "SelectFolderDialog", .choose = fTree.Path("chosen")});
  Expect({.window = "Confirmation", .press = "OKBtn"});
  fScript.ExpectMessage("Install Error\n\nMissing File: absent");
  Expect({.window = "Release Notes", .press = "OKBtn"});
  Expect({.window = "MessageText", .press = "Btn2"});
  fPackage.Write(fTree, "media/Setup.app");
  fStood = Standing();
  RunFromDisk();
  Note("");
  EXPECT_EQ(fLog, R"(asks for the memory
puts "" on the clipboard
puts "@/media/Before" on the clipboard
launches @/media/Before
waits 3 s
reads "TessarineWait" from the clipboard
waits 1 s
reads "TessarineWait" from the clipboard
waits 1 s
reads "TessarineDone:Ready." from the clipboard
shows "Ready."
shows "Main"
shows "Pre-Installation Notes"
shows "License Agreement"
shows "Pick One Choice"
shows "Select Options"
- early
+ copy
shows "Main"
shows "Confirmation"
looks into the archive
expands the archive
- chosen/Demo/old
+ chosen/Demo/content
runs : first
- late
+ made
+ content
runs : last
shows "Install Error

Missing File: absent"
reads "" from the clipboard
launches @/media/Setup.app/Contents/Resources/After
launches @/media/Setup.app/Contents/Resources/After
waits 3 s
reads "" from the clipboard
runs ditto -xk '@/media/Setup.app/Contents/Resources/one.zip' '@/chosen/Demo/.tessarine-install-*/Sub'
+ chosen/Demo/Sub
+ chosen/Demo/Sub/one
runs ditto -xk '@/media/Setup.app/Contents/Resources/two.zip' '@/chosen/Demo/.tessarine-install-*/Sub_Option'
+ chosen/Demo/Sub/two
shows "Release Notes"
opens http://done
shows "Confirmation"
+ temporary/Data3
- temporary/Data3
+ temporary/PostInstallCleanup.zip
runs ditto -xk '@/temporary/PostInstallCleanup.zip' '@/temporary/PostInstallCleanup.app'
+ temporary/PostInstallCleanup.app
+ temporary/PostInstallCleanup.data
launches @/temporary/PostInstallCleanup.app
)");
}

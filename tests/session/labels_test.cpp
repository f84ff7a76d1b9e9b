// SPDX-License-Identifier: MIT
// Each label of a publisher's, from the packager's description to the one place that shows it.
#include <nlohmann/json.hpp>

#include "pack/Bundle.h"
#include "pack/Description.h"
#include "session/SessionTest.h"
#include "support/ScriptedServer.h"

using nlohmann::json;

class Labels : public SessionTest {
 protected:
  Labels() {
    for (const char* file : {"TessarineStub", "TessarineClipboard", "TessarineNetwork.so"})
      fTree.Write(std::string("runtime/") + file, "", 0755);
    fs::copy_file(DITTO_PROGRAM, fTree.Path("runtime/ditto"));
    fTree.Write("payload/read me", std::string(1'000'001, 'r'));
    fTree.Write("extra/x", "some content");
    fTree.Folder("media");
    fMachine.SetClipboardText("");
  }
  void Pack(const json& labels, const json& more) const {
    json description = {{"targetFolder", "Demo"}, {"payload", {{"folder", "payload"}}}, {"labels", labels}};
    description.merge_patch(more);
    fs::remove_all(fTree.Path("media/Setup.app"));
    pack::MakeBundle(pack::ReadDescription(fTree.Write("description.json", description.dump())),
                     fTree.Path("media/Setup.app"), fTree.Path("runtime"));
  }
  /// A window by its title, what it shows, and the control that is pressed.
  void Expect27(const std::string& window, const Texts& texts, const std::string& press) {
    Expect({.window = window, .press = press, .look = [texts](QWidget& shown) {
              EXPECT_EQ(Shown(shown), texts);
            }});
  }
};

TEST_F(Labels, AllAreSeenWhereTheyBelong) {
  const std::vector<std::string> names = Words(
      "cannotWrite|quit|install|cancel|ok|agree|info|agreementTitle|infoTitle|9|confirmTitle|"
      "targetExists|deleteTarget|failed|folderTitle|folderSelect|nextDisc|17|patchFailed|inProgress|20|"
      "pleaseWait|installingOptions|choiceTitle|optionsTitle|preInstallNotesTitle|postInstallNotesTitle");
  json byName, byNumber, list;
  for (std::size_t i = 0; i < names.size(); ++i) {
    list.push_back("Text " + std::to_string(i));
    byName[names[i]] = byNumber[std::to_string(i)] = list.back();
  }
  ASSERT_EQ(list.size(), 27U);
  ScriptedServer server;
  std::vector<std::string> labels;
  fMachine.fNote = [&](const std::string& /*what*/) {
    if (MainWindow() == nullptr) return;
    const QString text = Find<QLabel>(*MainWindow(), "MessageLabel").property("text").toString();
    if (labels.empty() || labels.back() != text.toStdString()) labels.push_back(text.toStdString());
  };
  fScript.fNote = fMachine.fNote;
  json all = json::parse(R"({"message": "Hello", "info": "i", "preInstallNotes": "n", "agreement": "a",
                               "postInstallNotes": "r", "promptToReplace": true, "choices":
                               [{"name": "One", "folder": "extra", "target": "Sub"}]})");
  all["options"] = {{{"name", "Web"}, {"url", server.Address("/none")}, {"target", "Sub"}}};
  std::set<std::string> records;
  for (const json& given : {byName, byNumber, list}) {
    Pack(given, all);
    records.insert(fTree.Read("media/Setup.app/Contents/Resources/TextData"));
  }
  EXPECT_EQ(records.size(), 1U) << "the label's name, number or place";
  fTree.Write("chosen/Demo/old", "old");
  Texts texts{
      {"InfoBtn", "Text 6"}, {"InstallBtn", "Text 2"}, {"MessageLabel", "Hello"}, {"QuitBtn", "Text 1"}};
  Expect27(kMain, texts, "InfoBtn");
  Expect27("Text 8", {{"AgreementEdit", ""}, {"OKBtn", "Text 4"}}, "OKBtn");
  ExpectInstallPressed();
  for (const auto& [title, goOn] : {std::pair("Text 25", "Text 4"), {"Text 7", "Text 5"}})
    Expect27(title, {{"AgreementEdit", ""}, {"OKBtn", goOn}, {"QuitBtn", "Text 1"}}, "OKBtn");
  Expect({.window = "Text 23", .press = "ContinueBtn"});
  Expect({.window = "Text 24", .press = "ContinueBtn", .look = [](QWidget& dialog) {
            Find<QCheckBox>(dialog, "OptionCheckBox0").click();
          }});
  Expect({.window = "SelectFolderDialog", .choose = fTree.Path("chosen"), .look = [](QWidget& dialog) {
            const auto& files = dynamic_cast<QFileDialog&>(dialog);
            EXPECT_EQ(files.windowTitle() + files.labelText(QFileDialog::Accept) +
                          files.labelText(QFileDialog::Reject),
                      "Text 14Text 15Text 3");
          }});
  texts = {{"CancelBtn", "Text 3"}, {"ConfirmLabel1", "Text 11"}, {"ConfirmLabel2", "Text 12"}};
  texts["ConfirmLabel3"] = fTree.Path("chosen/Demo");
  texts["OKBtn"] = "Text 4";
  Expect27("Text 10", texts, "OKBtn");
  for (const char* told : {"Setup file download failed.", "Install failed for option Web"})
    fScript.ExpectMessage(told);
  Expect27("Text 26", {{"AgreementEdit", ""}, {"OKBtn", "Text 4"}}, "OKBtn");
  RunFromDisk("everything");
  EXPECT_EQ(labels, (std::vector<std::string>{"Hello", "Text 19", "Text 21", "Text 22 Web", "Text 21"}));
  EXPECT_FALSE(fTree.Has("chosen/Demo/old"));

  Pack(list, {{"preInstallNotes", {{"html", "<html>n"}}}, {"agreement", {{"html", "<html>a"}}}});
  ExpectInstallPressed();
  for (const auto& [title, goOn] : {std::pair("Text 25", "Text 4"), {"Text 7", "Text 5"}})
    Expect27(title, {{"ContinueBtn", goOn}, {"MyHTMLViewer", ""}, {"QuitBtn", "Text 1"}}, "ContinueBtn");
  fs::permissions(fTree.Folder("locked"), fs::perms(0555));
  fs::permissions(fTree.Path(), fs::perms(0755));
  Expect({.window = "SelectFolderDialog", .choose = fTree.Path("locked")});
  fScript.ExpectMessage("Text 0");
  {
    const OrdinaryUser user(fTree.Path("Applications"));
    RunFromDisk("a folder that can't be written");
  }

  Pack(list, {{"applicationFolder", true}, {"patch", true}, {"targetFolder", "Nowhere"}});
  ExpectInstallPressed();
  fScript.ExpectMessage("Text 18");
  RunFromDisk("a patch of nothing");
}

// SPDX-License-Identifier: MIT
// The folder dialog: what is typed or highlighted is taken, by a user of any speed.
#include "session/SessionTest.h"

constexpr const char* kFolders = "SelectFolderDialog";

class Folders : public SessionTest {
 protected:
  /// A folder of a short name, which the toolkit's completion would highlight on the way to those in it.
  Folders() {
    fMachine.fExecutable = fTree.Path("a/b/Setup.app/Contents/MacOS/TessarineStub");
    fPackage.Write(fTree, "a/b/Setup.app");
    for (const char* folder : {"a/b/dest/sub", "a/b/ with blanks ", "a/b/~", "a/b/say \"so\" & [*]",
                               "a/b/.hidden", "beside/deep", "home/mine/deep"})
      fTree.Folder(folder);
    fTree.Link("a/b/link", fTree.Path("beside/deep"));
    fTree.Write("a/b/file", "");
  }
  /// Nowhere else, too.
  void ExpectInstalledIn(const std::string& folder, const std::string& why) {
    RunFromDisk(why);
    std::string found;
    for (const auto& [path, what] : fTree.Look())
      if (path.ends_with("Demo/content")) found += path;
    EXPECT_EQ(found, (fs::path(folder) / "Demo/content").lexically_normal()) << why;
    fs::remove_all(fTree.Path(folder) + "/Demo");
  }
};

TEST_F(Folders, WhatIsTypedIsTaken) {
  const std::string shown = fTree.Path("a/b");
  const std::pair<std::string, const char*> rows[] = {{shown, "a/b"},
                                                      {"", "a/b"},
                                                      {".", "a/b"},
                                                      {shown + "/dest/sub//", "a/b/dest/sub"},
                                                      {"dest/sub", "a/b/dest/sub"},
                                                      {" with blanks ", "a/b/ with blanks "},
                                                      {".hidden", "a/b/.hidden"},
                                                      {"~", "a/b/~"},
                                                      {"~/mine/deep", "home/mine/deep"},
                                                      {"../../beside", "beside"},
                                                      {"link/..", "beside"}};
  for (const auto& [typed, taken] : rows) {
    ExpectInstallPressed();
    Expect({.window = kFolders, .choose = typed, .key = typed.empty() ? Qt::Key_Return : 0});
    ExpectInstalledIn(taken, typed);
  }
}

TEST_F(Folders, WhatIsHighlightedIsTakenAndNothingInPlaceOfWhatIsNotThere) {
  const auto row = [](QWidget& dialog, const char* name) {
    auto& list = Find<QTreeView>(dialog, "treeView");
    QModelIndexList found;
    EXPECT_TRUE(QTest::qWaitFor([&] {  // the list is read by a thread
      found = list.model()->match(list.model()->index(0, 0, list.rootIndex()), Qt::DisplayRole, name);
      return !found.isEmpty();
    }));
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, list.visualRect(found.front()).center());
  };
  const auto lineIs = [](QWidget& dialog, const char* text) {
    EXPECT_EQ(Find<QLineEdit>(dialog, "fileNameEdit").text(), text);
  };
  const auto select = [](QWidget& dialog) {
    QPushButton* button = Find<QDialogButtonBox>(dialog, "buttonBox").button(QDialogButtonBox::Open);
    EXPECT_EQ(button->text(), "Here && &&there");
    EXPECT_TRUE(button->isEnabled());
    QTest::mouseClick(button, Qt::LeftButton);
  };
  fPackage.textData[6] = "|||A & B|||||||||||[*] Where & [*][*]to?|Here &\n&there";
  fPackage.Write(fTree, "a/b/Setup.app");
  ExpectInstallPressed();
  Expect({.window = kFolders, .look = [&](QWidget& dialog) {
            EXPECT_EQ(dialog.windowHandle()->title(), "[*] Where & [*][*]to?");
            row(dialog, "say \"so\" & [*]");
            lineIs(dialog, "say \"so\" & [*]");
            auto& list = Find<QTreeView>(dialog, "treeView");
            for (const Qt::Key key : {Qt::Key_Delete, Qt::Key_F2}) QTest::keyClick(&list, key);
            EXPECT_TRUE(list.contextMenuPolicy() == Qt::ActionsContextMenu && list.actions().size() == 1);
            EXPECT_TRUE(list.findChildren<QLineEdit*>().isEmpty()) << "renaming";
            EXPECT_FALSE(list.dragEnabled());
            Find<QToolButton>(dialog, "newFolderButton").click();
            EXPECT_EQ(list.findChildren<QLineEdit*>().size(), 1) << "naming";
            EXPECT_TRUE(fTree.Has("a/b/New Folder"));
            row(dialog, "say \"so\" & [*]");
            select(dialog);
          }});
  ExpectInstalledIn("a/b/say \"so\" & [*]", "by mouse");

  ExpectInstallPressed();
  Expect({.window = kFolders, .choose = "file"});
  fScript.ExpectMessage("There is no folder \"" + fTree.Path("a/b/file") + "\".");
  Expect({.window = kFolders, .choose = "dest/none", .look = [&](QWidget& dialog) {
            EXPECT_EQ(Find<QLineEdit>(dialog, "fileNameEdit").selectedText(), "file");
            row(dialog, "dest");
          }});
  fScript.ExpectMessage("There is no folder \"" + fTree.Path("a/b/destdest/none") + "\".");
  Expect({.window = kFolders, .look = [&](QWidget& dialog) {
            row(dialog, "dest");
            dynamic_cast<QFileDialog&>(dialog).setDirectory(QString::fromStdString(fTree.Path("beside")));
            lineIs(dialog, "");
            row(dialog, "deep");
            QTest::keyClick(&Find<QTreeView>(dialog, "treeView"), Qt::Key_Return);  // opens it
            lineIs(dialog, "");
            select(dialog);
          }});
  ExpectInstalledIn("beside/deep", "in the end");
}

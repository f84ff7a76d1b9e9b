// SPDX-License-Identifier: MIT
// Whole runs of the installer, from its start to its end, over a package in the case's tree.
#pragma once

#include "platform/qt/QtMachine.h"
#include "session/App.h"
#include "support/ModalScript.h"
#include "support/TestMachine.h"
#include "support/TestPackage.h"

/// The main window, by a control that only it has.
inline constexpr const char* kMain = "InstallBtn";

class SessionTest : public MachineTest {
 protected:
  SessionTest() {
    fMachine.fPump = [this] { fToolkit.DoEvents(0); };
    fMachine.fArchive.work = [this](const FolderItem& archive) { Unpack(archive); };
    fPackage.data[1] = "stamp";
    fPackage.textData[7] = "Demo";
  }

  /// What an archive brings stands here, by its name in the tree, until it takes its place.
  std::string Beside(const FolderItem& archive, const std::string& name) const {
    return archive.Parent().Child(name).NativePath().substr(fTree.Path().size() + 1);
  }
  /// "Demo.zip" becomes the folder "Demo" beside it, with the archive's bytes in the file "content".
  void Unpack(const FolderItem& archive) const {
    const std::string name = archive.Name().substr(0, archive.Name().size() - 4);
    fTree.Write(Beside(archive, name + "/content"), fTree.Read(Beside(archive, archive.Name())));
  }

  void Expect(Step step) { fScript.Expect(std::move(step)); }
  void ExpectInstallPressed() { Expect({.window = kMain, .press = "InstallBtn"}); }

  /// One run over the package as it stands in the fields. `why` tells the rows of a table apart.
  void Run(const std::string& why = "") {
    fPackage.Write(fTree, "media/Setup.app");
    RunFromDisk(why);
  }
  void RunFromDisk(const std::string& why = "") {
    EXPECT_EQ(App(TestApplication()).Run(), 0);
    EXPECT_EQ(fScript.TakeProblems(), "") << why;
  }

  /// A run that leaves every file as it was.
  void RunInVain(const std::string& why = "") {
    fPackage.Write(fTree, "media/Setup.app");
    const Contents before = fTree.Look();
    RunFromDisk(why);
    EXPECT_EQ(fTree.Look(), before) << why;
  }

  QtMachine fToolkit;
  TestPackage fPackage;
  ModalScript fScript;
};

/// The texts of a window's visible controls, by control name.
using Texts = std::map<std::string, std::string>;
inline Texts Shown(const QWidget& window) {
  Texts texts;
  for (const QWidget* control : window.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly))
    if (control->isVisible())
      texts[control->objectName().toStdString()] = control->property("text").toString().toStdString();
  return texts;
}

template <typename Widget>
Widget& Find(const QWidget& window, const char* name) {
  auto* widget = window.findChild<Widget*>(name);
  if (widget == nullptr) throw std::runtime_error(name);
  return *widget;
}

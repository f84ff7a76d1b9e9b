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
    fMachine.fEnding = Application::Quitting;
    fMachine.fArchive.work = [this](const FolderItem& folder) { Unpack(folder); };
    fScript.fReading = [this] { fMachine.fMilliseconds += 520; };
    fPackage.data[1] = "stamp";
    fPackage.textData[7] = "Demo";
  }

  /// What an archive brings stands in `folder`, by this name in the tree, until it takes its place.
  std::string In(const FolderItem& folder, const std::string& name) const {
    return folder.Child(name).NativePath().substr(fTree.Path().size() + 1);
  }
  /// The folder "Demo", with the Payload's bytes in the file "content".
  void Unpack(const FolderItem& folder) const {
    std::string bytes = fMachine.fExpanded.back();
    for (std::size_t i = 1; i < bytes.size(); i += 2) --bytes[i];
    fTree.Write(In(folder, "Demo/content"), bytes);
  }

  /// "@" is the case's folder.
  std::string Here(QString text) const {
    return text.replace("@", QString::fromStdString(fTree.Path())).toStdString();
  }
  /// While a run goes on.
  static QWidget* MainWindow() {
    for (QWidget* window : QApplication::topLevelWidgets())
      if (window->findChild<QWidget*>(kMain) != nullptr) return window;
    return nullptr;
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

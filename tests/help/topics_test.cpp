// SPDX-License-Identifier: MIT
// Topics, paths, messages and the help key. No viewer listens here.
#include "help/HelpTest.h"
#include "platform/Keyboard.h"

using namespace Keyboard;

class Help : public HelpTest {};

TEST_F(Help, DialogsLieOverEachOtherAndGiveTopicsBack) {
  fHelp.SetTopic("window");
  fHelp.DialogEnd();
  EXPECT_EQ(fHelp.GetTopic(), "window");
  EXPECT_EQ(fMachine.fBeeps, 1);
  for (int depth = 1; depth <= 22; ++depth) fHelp.DialogStart(std::to_string(depth));
  EXPECT_EQ(fHelp.GetTopic(), "22") << "kept or not, it is the topic";
  for (int depth = 19; depth >= 0; --depth) {
    fHelp.DialogEnd();
    EXPECT_EQ(fHelp.GetTopic(), depth == 0 ? "window" : std::to_string(depth)) << "twenty were kept";
  }
  EXPECT_EQ(fMachine.fBeeps, 1);
}

TEST_F(Help, PathsAreCompleted) {
  const char* const rows[][5] = {
      {"", "Ombrel", "Guide", "Ombrel.app", "Guide"},
      {"", "Guide.hlp", "Guide", "Guide.hlp", "Guide"},
      {"", "/a.b/Ombrel", "/a.b/Guide", "/a.b/Ombrel.app", "/a.b/Guide"},
      {"/rt", "a/Ombrel.app", "a/Guide", "/rt/a/Ombrel.app", "/rt/a/Guide"},
  };
  for (const auto& [runtime, viewer, file, fullViewer, fullFile] : rows) {
    OmbrelRuntimeFolderPath = runtime;
    fHelp.Init(viewer, file, "");
    EXPECT_EQ(fHelp.fOmbrelPath + " " + fHelp.fHelpFilePath, std::string(fullViewer) + " " + fullFile);
  }
}

TEST_F(Help, WhatIsMissingIsToldAndNothingStarts) {
  const char* const rows[][3] = {
      {"Ombrel", "Guide", "Ombrel was not found in the folder containing this application."},
      {"Viewer", "Guide", "Help file was not found in the folder containing this application."},
      {"Viewer", "sub/Guide", "Help file not found at: sub/Guide"},
  };
  for (const auto& [viewer, file, message] : rows) {
    fHelp.Init(viewer, file, "");
    fScript.ExpectMessage(message);
    fHelp.Show("topic");
    EXPECT_EQ(fScript.TakeProblems(), "") << message;
  }
  EXPECT_TRUE(fMachine.fLaunched.empty());
  fTree.Write("media/sub/Notes", "pages");
  fHelp.ShowHelpFileAndTopic("sub/Notes", "three");
  EXPECT_EQ(fMachine.fLaunched, std::vector{fTree.Path("media/Viewer.app")});
  EXPECT_EQ(fHelp.GetTopic(), "three");
  EXPECT_EQ(fMachine.Ticks(), 120) << "the viewer's start alone: without a bus there is nothing to wait for";
}

TEST_F(Help, TheHelpKeyIsFollowedAndShowsTheTopicOnce) {
  QWidget window;
  const auto send = [&window](QEvent::Type type, bool repeated = false) {
    QKeyEvent event(type, Qt::Key_F1, Qt::NoModifier, "", repeated);
    QApplication::sendEvent(&window, &event);
    return AsyncKeyDown(kF1);
  };
  EXPECT_TRUE(send(QEvent::KeyPress));
  EXPECT_TRUE(send(QEvent::KeyRelease, true)) << "a repeat lets go, too";
  QTimer::singleShot(0, &window, [&] { send(QEvent::KeyRelease); });
  fToolkit.DoEvents(1);
  EXPECT_FALSE(AsyncKeyDown(kF1)) << "let go while input was dropped";
  send(QEvent::KeyPress);
  QApplicationStateChangeEvent left(Qt::ApplicationInactive);
  QApplication::sendEvent(qApp, &left);
  EXPECT_FALSE(AsyncKeyDown(kF1));
  EXPECT_FALSE(send(QEvent::KeyPress, true)) << "held since another program had the keyboard";

  fHelp.Init("Viewer", "Guide.hlp", "window");
  fHelp.Idle();
  EXPECT_TRUE(fHelp.MenuHelp("menu"));
  EXPECT_EQ(fHelp.GetTopic(), "window");
  EXPECT_TRUE(fMachine.fLaunched.empty());
  send(QEvent::KeyPress);
  fMachine.fPump = [this] { fHelp.Idle(); };
  fHelp.Idle();
  EXPECT_EQ(fMachine.fLaunched.size(), 1U);
  EXPECT_FALSE(fHelp.MenuHelp("menu"));
  EXPECT_EQ(fHelp.GetTopic(), "menu");
  send(QEvent::KeyRelease);
  EXPECT_TRUE(fHelp.MenuHelp("other"));
  EXPECT_EQ(fMachine.fLaunched.size(), 2U);
}

TEST_F(Help, TheRuntimeFolderIsInTheBundleOrBesideTheProgram) {
  fTree.Folder("Full.app/Contents/Data");
  const char* const rows[][2] = {{"Full.app/Contents/MacOS/Program", "Full.app/Contents/Data/"},
                                 {"Empty.app/Contents/MacOS/Program", "Empty.app/Contents/MacOS/Data/"},
                                 {"bin/Program", "bin/Data/"}};
  for (const auto& [program, folder] : rows) {
    fMachine.fExecutable = fTree.Path(program);
    KvHelp::SetOmbrelRuntimeFolderPath();
    EXPECT_EQ(OmbrelRuntimeFolderPath, fTree.Path(folder));
  }
}

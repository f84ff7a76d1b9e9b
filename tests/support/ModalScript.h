// SPDX-License-Identifier: MIT
// Plays the user of a run: answers the windows that appear, in the order in which they are expected,
// with real clicks and keys. Whatever goes another way is written down for the case to look at behind
// the blocking call, and closed, so that the call returns.
#pragma once

#include <QtTest>
#include <QtWidgets>
#include <deque>
#include <functional>
#include <string>

#include "platform/Application.h"

/// The display connection that all cases of a test program with windows share.
Application& TestApplication();

/// One window and what is done with it: first `look`, then it is read, then one of `press`, `choose`, `key`,
/// `close`.
struct Step {
  std::string window;    // its title, its object name, or the name of a control in it
  std::string text{};    // of a message box: its whole text
  std::string press{};   // the control name of a button or label
  std::string choose{};  // what is typed into the folder dialog, and Return
  int key = 0;           // a Qt::Key, to the control with the focus
  bool close = false;    // a close request of the window manager
  std::function<void(QWidget&)> look{};
};

class ModalScript : public QObject {
 public:
  ModalScript();

  void Expect(Step step) { fSteps.push_back(std::move(step)); }
  void ExpectMessage(const std::string& text) {
    Expect({.window = "MessageBox", .text = text, .press = "OKBtn"});
  }
  /// What went wrong since the last call, a line each; empty when all expected windows came and no other.
  std::string TakeProblems();

  /// Lets the time pass that a user needs to read a window.
  std::function<void()> fReading;
  /// Hears of each window that is answered.
  std::function<void(const std::string& name)> fNote;

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  void LookSoon() { QTimer::singleShot(0, this, &ModalScript::Look); }
  void Look();
  void Act(QWidget& window, const Step& step);
  void Press(QWidget& window, const std::string& name);

  std::deque<Step> fSteps;
  std::string fProblems;
  QTimer fPatience;
};

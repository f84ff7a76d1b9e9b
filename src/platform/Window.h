// SPDX-License-Identifier: MIT
// Top-level windows of fixed design: controls at given places, shown modally or for the whole run.
#pragma once

#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Picture.h"

class NativeWindow;

/// A movable frame without close, minimise, maximise or full-screen button.
struct WindowStyle {
  bool resizable = false;
  Size smallest{};          // of a resizable window
  bool whitePaper = false;  // white background and black text, whatever the desktop's colours
  bool dialog = true;       // false for the program's one main window
  bool hidden = false;      // never on the screen: shown modally, it only waits
};

/// Owns its native window; controls are members of derived classes and refer to it.
class Window {
 public:
  Window(Size size, const std::string& title, const WindowStyle& style = {});
  virtual ~Window();
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;

  /// Shown as it stands.
  std::string Title() const;
  void SetTitle(const std::string& title);
  Size ContentSize() const;
  /// Another size than designed; locked controls follow. No smaller size is left to the user.
  void Resize(Size size);

  /// Drawn below the controls, from the top left.
  void SetBackdrop(const Picture& picture);

  void Show();
  void Hide();
  bool Visible() const;
  /// Shows the window above all others of the program and returns when it has been hidden, or the program
  /// quits. While a hidden one waits, what the user does is dropped, as in Machine::DoEvents.
  void ShowModal();
  /// For a question that deletes: whenever it is shown modally, what the user does in the first half second
  /// that it is on the screen is dropped. It was meant for the window before.
  void GuardAnswers();
  /// Gives the window the focus.
  void SetFocus();
  /// Brings the program and this window to the front, as far as the desktop allows.
  void ToFront();
  /// Repaints all of it before returning.
  void Refresh();

  /// The desktop asks the window to close, or the session ends. True keeps it open.
  virtual bool Event_CancelClose(bool appQuitting);
  /// The desktop closed the window (there is no button of the frame for it).
  virtual void Event_Close() {}

  NativeWindow& Native() { return *fNative; }

 private:
  std::unique_ptr<NativeWindow> fNative;
};

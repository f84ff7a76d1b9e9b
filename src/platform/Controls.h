// SPDX-License-Identifier: MIT
// The controls of a window. Each bears its name for tests and assistive technology.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/Geometry.h"
#include "platform/Picture.h"
#include "platform/Secret.h"
#include "platform/Window.h"

struct NativeControl;

/// Which edges of the window a control keeps its distance to when the window is resized.
enum class Lock { None, AllEdges, BottomRight };

/// Belongs to the window that it was made in, which must outlive it.
class Control {
 public:
  const std::string& Name() const { return fName; }
  /// The place as designed or last set; a caption that needs more room may be drawn wider.
  Rect Place() const;
  void SetPlace(const Rect& place);
  bool Visible() const;
  void SetVisible(bool visible);
  void SetEnabled(bool enabled);
  /// Has the keyboard go to this control once its window is in front.
  void SetFocus();
  /// Repaints the control before returning.
  void Refresh();

 protected:
  Control(Window& window, std::string name, const Rect& place, Lock lock,
          std::unique_ptr<NativeControl> native);
  ~Control();
  Control(const Control&) = delete;
  Control& operator=(const Control&) = delete;
  Window& Owner() const { return fWindow; }
  NativeControl& Native() const { return *fNative; }

 private:
  Window& fWindow;
  std::string fName;
  std::unique_ptr<NativeControl> fNative;
};

class PushButton : public Control {
 public:
  enum Role { Plain, Default, Cancel };
  PushButton(Window& window, std::string name, const Rect& place, const std::string& caption,
             Role role = Plain, Lock lock = Lock::None);
  const std::string& Caption() const { return fCaption; }
  void SetCaption(const std::string& caption);
  void SetRole(Role role);
  /// Runs on a click, on Space with the focus, and by Return (default) or Escape (cancel).
  void OnAction(std::function<void()> action);

 private:
  std::string fCaption;
};

/// A control that is on or off. Its caption is shown as it stands and made to fit as a label's text is.
class Toggle : public Control {
 public:
  const std::string& Caption() const { return fCaption; }
  void SetCaption(const std::string& caption);
  /// The tool tip, as it stands, never as markup. Where the caption is cut, the whole of it comes first.
  void SetHelpTag(const std::string& tag);
  bool Value() const;
  void SetValue(bool on);

 protected:
  Toggle(Window& window, std::string name, const Rect& place, const std::string& caption,
         std::unique_ptr<NativeControl> native);

 private:
  std::string fCaption;
};

/// Of all radio buttons of a window one is on at a time; the arrow keys go from one to the next.
class RadioButton : public Toggle {
 public:
  RadioButton(Window& window, std::string name, const Rect& place, const std::string& caption);
};

class CheckBox : public Toggle {
 public:
  CheckBox(Window& window, std::string name, const Rect& place, const std::string& caption);
};

/// Text is shown as it stands, never as markup. A text too large for its place is drawn smaller, and
/// where even that is not enough it is cut with an ellipsis and shown whole as a tool tip.
class Label : public Control {
 public:
  enum Style { OneLine, MultiLine, Link, Small };
  enum class Alignment { Left, Centre };
  Label(Window& window, std::string name, const Rect& place, const std::string& text, Style style = OneLine);
  const std::string& Text() const { return fText; }
  void SetText(const std::string& text);
  void SetAlignment(Alignment alignment);
  /// A mouse press on the label, or Return or Space on a link with the focus.
  void OnMouseDown(std::function<void()> action);

 private:
  std::string fText;
};

/// A transparent place for a picture.
class Canvas : public Control {
 public:
  Canvas(Window& window, std::string name, const Rect& place);
  /// Drawn from the top left at its own size in points; what is larger than the place is cut.
  void SetBackdrop(const Picture& picture);
};

class ProgressBar : public Control {
 public:
  ProgressBar(Window& window, std::string name, const Rect& place, int maximum);
  int Maximum() const;
  void SetMaximum(int maximum);
  int Value() const;
  /// Held within 0 and the maximum.
  void SetValue(int value);
};

/// A line that the user types.
class TextField : public Control {
 public:
  /// `hint` is shown while nothing has been typed.
  TextField(Window& window, std::string name, const Rect& place, const std::string& hint = "");
  std::string Text() const;
  /// The text, which the field shows no more; what it stood in is overwritten. The toolkit may have written
  /// single letters elsewhere: see Machine::ForbidCoreDumps.
  Secret TakeSecret();
};

/// A read-only plain text that scrolls. As a message it has no frame and the window's colours, and takes
/// the focus only for selecting.
class TextArea : public Control {
 public:
  enum Style { Framed, Message };
  TextArea(Window& window, std::string name, const Rect& place, Lock lock, Style style = Framed);
  const std::string& Text() const { return fText; }
  void SetText(const std::string& text);

 private:
  std::string fText;
};

/// A page from memory: no network, no scripts, no files. Links open in the browser.
class HTMLViewer : public Control {
 public:
  HTMLViewer(Window& window, std::string name, const Rect& place, Lock lock);
  void LoadPage(const std::string& html);
};

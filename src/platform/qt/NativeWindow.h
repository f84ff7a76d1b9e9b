// SPDX-License-Identifier: MIT
// The toolkit's side of a Window: keeps the design places of its controls, and its keys.
#pragma once

#include <QDialog>
#include <QEventLoop>
#include <QMenu>
#include <QPushButton>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/Controls.h"
#include "platform/Window.h"

/// White becomes transparent where the picture says so.
QPixmap ToQt(const Picture& picture);

inline QRect ToQt(const Rect& place) {
  return {place.left, place.top, place.width, place.height};
}

/// A control's widget, owned by its window's widget.
struct NativeControl {
  QWidget* widget = nullptr;
  Rect place;  // at the window's design size
  Lock lock = Lock::None;
  PushButton::Role role = PushButton::Plain;
  QString caption;  // of a button, whole
  std::function<void()> action;
};

class NativeWindow : public QDialog {
  Q_OBJECT

 public:
  NativeWindow(Window& owner, Size size, const std::string& title, const WindowStyle& style);

  ~NativeWindow() override;
  /// The window made last of those on the screen, else the first one made; none before any is.
  static NativeWindow* Newest(const NativeWindow* besides = nullptr);

  void SetTitle(const std::string& title);
  const std::string& Title() const { return fTitle; }
  void Add(NativeControl& control);
  void Remove(const NativeControl& control);
  void ResizeTo(Size size);
  /// Puts every control where its design, its locks and its caption want it.
  void Relayout();
  void GuardAnswers() { fGuardsAnswers = true; }
  void RunModal();
  void EndModal();
  void SetBackdrop(const QPixmap& picture);
  void SetContextMenu(std::unique_ptr<QMenu> menu) { fMenu = std::move(menu); }

 protected:
  void showEvent(QShowEvent* event) override;
  void closeEvent(QCloseEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
  void keyPressEvent(QKeyEvent* event) override;
  void resizeEvent(QResizeEvent* event) override;
  void contextMenuEvent(QContextMenuEvent* event) override;
  void reject() override;

 private:
  Rect PlaceNow(const NativeControl& control) const;
  void LayOutButtons();
  NativeControl* DecliningButton() const;
  void PutOverParent();
  bool CanHaveBeenRead() const;

  Window& fOwner;
  Size fDesign;
  std::string fTitle;
  WindowStyle fStyle;
  std::vector<NativeControl*> fControls;
  QPixmap fBackdrop;
  std::unique_ptr<QMenu> fMenu;
  QEventLoop* fModalLoop = nullptr;
  bool fGuardsAnswers = false;
  std::optional<std::int64_t> fSeenSince;  // in ticks, since it was first painted on the screen
};

/// Clicks the button unless it is hidden or disabled.
void PushNative(NativeControl& button);

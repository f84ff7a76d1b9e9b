// SPDX-License-Identifier: MIT
#include "platform/qt/NativeWindow.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QProgressBar>
#include <QScreen>
#include <QWindow>
#include <algorithm>
#include <map>

#include "platform/Application.h"
#include "platform/Machine.h"
#include "platform/qt/ButtonRow.h"
#include "platform/qt/InputDropped.h"
#include "platform/qt/Verbatim.h"

namespace {

constexpr int kCaptionMargins = 16;

Qt::WindowFlags FrameOf(const WindowStyle& style) {
  return (style.dialog ? Qt::Dialog : Qt::Window) | Qt::CustomizeWindowHint | Qt::WindowTitleHint;
}

/// All windows in the order in which they were made.
std::vector<NativeWindow*> gWindows;

QPalette WhitePaper(QPalette palette) {
  palette.setColor(QPalette::Window, Qt::white);
  palette.setColor(QPalette::WindowText, Qt::black);
  return palette;
}

/// Makes a caption fit; the whole of it stays as accessible name.
void ShowCaption(QPushButton& button, const QString& caption) {
  constexpr int kFrame = 8;  // of both sides
  const QSizeF room(button.width() - kFrame, button.height());
  const FittedText fitted = FitText(caption, QApplication::font(&button), room, Wrap::OneLine);
  if (button.font() != fitted.font) button.setFont(fitted.font);
  button.setText(WithoutMnemonic(fitted.shown));
  button.setToolTip(PlainToolTip(fitted.cut ? caption : QString()));
}

}  // namespace

QPixmap ToQt(const Picture& picture) {
  QImage image(picture.pixels.data(), picture.width, picture.height, qsizetype{3} * picture.width,
               QImage::Format_RGB888);
  image = image.convertToFormat(QImage::Format_ARGB32);
  if (picture.transparent) {
    for (int y = 0; y < image.height(); ++y) {
      auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
      std::replace(line, line + image.width(), qRgb(255, 255, 255), qRgba(255, 255, 255, 0));
    }
  }
  return QPixmap::fromImage(std::move(image));
}

void PushNative(NativeControl& button) {
  auto* widget = qobject_cast<QPushButton*>(button.widget);
  if (widget != nullptr && !widget->isHidden() && widget->isEnabled()) widget->click();
}

NativeWindow::NativeWindow(Window& owner, Size size, const std::string& title, const WindowStyle& style)
    : QDialog(nullptr, FrameOf(style)), fOwner(owner), fDesign(size), fStyle(style) {
  gWindows.push_back(this);
  SetTitle(title);
  if (style.whitePaper) setPalette(WhitePaper(palette()));
  ResizeTo(size);
}

NativeWindow::~NativeWindow() {
  std::erase(gWindows, this);
}

void NativeWindow::SetTitle(const std::string& title) {
  fTitle = title;
  setWindowTitle(VerbatimTitle(title));
}

NativeWindow* NativeWindow::Newest(const NativeWindow* besides) {
  NativeWindow* newest = nullptr;
  for (NativeWindow* window : gWindows)
    if (window != besides && (window->isVisible() || newest == nullptr)) newest = window;
  return newest;
}

void NativeWindow::ResizeTo(Size size) {
  if (fStyle.resizable) {
    setMinimumSize(std::min(fStyle.smallest.width, size.width),
                   std::min(fStyle.smallest.height, size.height));
    resize(size.width, size.height);
  } else {
    setFixedSize(size.width, size.height);
  }
}

void NativeWindow::Add(NativeControl& control) {
  control.widget->setParent(this);
  fControls.push_back(&control);
  Relayout();
}

void NativeWindow::Remove(const NativeControl& control) {
  std::erase(fControls, &control);
}

Rect NativeWindow::PlaceNow(const NativeControl& control) const {
  Rect place = control.place;
  const int wider = width() - fDesign.width;
  const int higher = height() - fDesign.height;
  if (control.lock == Lock::AllEdges) {
    place.width = std::max(place.width + wider, 1);
    place.height = std::max(place.height + higher, 1);
  } else if (control.lock == Lock::BottomRight) {
    place.left += wider;
    place.top += higher;
  }
  return place;
}

void NativeWindow::Relayout() {
  for (const NativeControl* control : fControls) control->widget->setGeometry(ToQt(PlaceNow(*control)));
  if (isVisible()) LayOutButtons();
}

void NativeWindow::showEvent(QShowEvent* event) {
  QDialog::showEvent(event);
  // Captions are measured once the desktop has been asked for the window: the fonts load meanwhile.
  QMetaObject::invokeMethod(this, &NativeWindow::Relayout, Qt::QueuedConnection);
}

void NativeWindow::LayOutButtons() {
  std::map<int, std::vector<NativeControl*>> rows;  // by top
  for (NativeControl* control : fControls) {
    if (qobject_cast<QPushButton*>(control->widget) != nullptr && !control->widget->isHidden())
      rows[PlaceNow(*control).top].push_back(control);
  }
  for (auto& [top, row] : rows) {
    std::sort(row.begin(), row.end(),
              [](const auto* a, const auto* b) { return a->place.left < b->place.left; });
    std::vector<ButtonSpan> spans;
    for (const NativeControl* control : row) {
      const Rect place = PlaceNow(*control);
      const QFontMetrics metrics(QApplication::font(control->widget));
      const int wanted = metrics.horizontalAdvance(control->caption) + kCaptionMargins;
      spans.push_back({place.left, place.width, wanted});
    }
    spans = FitButtonRow(std::move(spans), width());
    for (std::size_t i = 0; i < row.size(); ++i) {
      QWidget* button = row[i]->widget;
      button->setGeometry(spans[i].left, top, spans[i].width, row[i]->place.height);
      ShowCaption(*qobject_cast<QPushButton*>(button), row[i]->caption);
    }
  }
  // A bar beside grown buttons ends before them.
  for (const NativeControl* control : fControls) {
    if (qobject_cast<QProgressBar*>(control->widget) == nullptr) continue;
    QRect bar = ToQt(PlaceNow(*control));
    for (const NativeControl* button : rows[bar.top()])
      if (button->place.left > control->place.left)
        bar.setRight(std::min(bar.right(), button->widget->x() - 12));
    control->widget->setGeometry(bar);
  }
}

void NativeWindow::PutOverParent() {
  QWidget* parent = Newest(this);
  if (parent == nullptr || !parent->isVisible()) return;
  winId();  // gives the window its handle
  windowHandle()->setTransientParent(parent->windowHandle());
  const QRect space = parent->screen()->availableGeometry();
  QRect place(QPoint(0, 0), size());
  place.moveCenter(parent->frameGeometry().center());
  place.moveLeft(std::clamp(place.left(), space.left(), std::max(space.left(), space.right() - width())));
  place.moveTop(
      std::clamp(place.top(), space.top() + 24, std::max(space.top() + 24, space.bottom() - height())));
  move(place.topLeft());
}

void NativeWindow::RunModal() {
  if (Application::Quitting()) return;
  QEventLoop loop;
  fModalLoop = &loop;
  fSeenSince.reset();
  std::optional<EarlyInputDropped> guard;
  if (fGuardsAnswers) guard.emplace([this] { return !CanHaveBeenRead(); });
  if (fStyle.hidden) {
    const InputDropped dropped;
    loop.exec();
  } else {
    setWindowModality(Qt::ApplicationModal);
    PutOverParent();
    show();
    raise();
    activateWindow();
    loop.exec();
  }
  fModalLoop = nullptr;
  hide();
}

bool NativeWindow::CanHaveBeenRead() const {
  constexpr std::int64_t kTicks = 30;  // half a second
  return fSeenSince && Machine::Current().Ticks() - *fSeenSince > kTicks;
}

void NativeWindow::EndModal() {
  hide();
  if (fModalLoop != nullptr) fModalLoop->quit();
}

NativeControl* NativeWindow::DecliningButton() const {
  NativeControl* other = nullptr;
  NativeControl* any = nullptr;
  for (NativeControl* control : fControls) {
    if (qobject_cast<QPushButton*>(control->widget) == nullptr || control->widget->isHidden()) continue;
    if (control->role == PushButton::Cancel) return control;
    any = control;
    if (control->role != PushButton::Default) other = control;
  }
  return other != nullptr ? other : any;
}

void NativeWindow::closeEvent(QCloseEvent* event) {
  // Only buttons end a dialog: a close request of the desktop's declines, or takes the one way out.
  event->ignore();
  if (fModalLoop != nullptr) {
    if (NativeControl* button = DecliningButton()) PushNative(*button);
  } else if (!fOwner.Event_CancelClose(false)) {
    fOwner.Event_Close();
  }
}

void NativeWindow::SetBackdrop(const QPixmap& picture) {
  fBackdrop = picture;
  update();
}

void NativeWindow::paintEvent(QPaintEvent* event) {
  QDialog::paintEvent(event);
  if (!fSeenSince) fSeenSince = Machine::Current().Ticks();
  if (!fBackdrop.isNull()) QPainter(this).drawPixmap(0, 0, fBackdrop);
}

void NativeWindow::reject() {
  for (NativeControl* control : fControls)
    if (control->role == PushButton::Cancel) PushNative(*control);
}

void NativeWindow::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_F10 && fMenu != nullptr)
    fMenu->popup(mapToGlobal(QPoint(0, 0)));
  else
    QDialog::keyPressEvent(event);
}

void NativeWindow::resizeEvent(QResizeEvent* event) {
  QDialog::resizeEvent(event);
  Relayout();
}

void NativeWindow::contextMenuEvent(QContextMenuEvent* event) {
  if (fMenu != nullptr) fMenu->popup(event->globalPos());
}

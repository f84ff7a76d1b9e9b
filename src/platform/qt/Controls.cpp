// SPDX-License-Identifier: MIT
#include "platform/Controls.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QRadioButton>
#include <algorithm>
#include <utility>

#include "platform/qt/NativeLabel.h"
#include "platform/qt/NativeText.h"
#include "platform/qt/NativeToggle.h"
#include "platform/qt/NativeViewer.h"
#include "platform/qt/NativeWindow.h"
#include "platform/qt/Verbatim.h"

namespace {

std::unique_ptr<NativeControl> Made(QWidget* widget) {
  auto native = std::make_unique<NativeControl>();
  native->widget = widget;
  return native;
}

NativeLabel* MadeLabel(Label::Style style) {
  auto* label = new NativeLabel(style == Label::MultiLine ? Wrap::Words : Wrap::OneLine);
  if (style == Label::Link) label->MakeLink();
  if (style == Label::Small) {
    QFont small = label->font();
    small.setPointSize(9);
    label->setFont(small);
  }
  return label;
}

template <typename Widget>
Widget& As(NativeControl& native) {
  return *static_cast<Widget*>(native.widget);
}

template <typename Work>
void WithToggle(NativeControl& native, const Work& work) {
  if (auto* radio = dynamic_cast<NativeToggle<QRadioButton>*>(native.widget))
    work(*radio);
  else
    work(dynamic_cast<NativeToggle<QCheckBox>&>(*native.widget));
}

}  // namespace

Control::Control(Window& window, std::string name, const Rect& place, Lock lock,
                 std::unique_ptr<NativeControl> native)
    : fWindow(window), fName(std::move(name)), fNative(std::move(native)) {
  fNative->place = place;
  fNative->lock = lock;
  fNative->widget->setObjectName(QString::fromStdString(fName));
  if (fNative->widget->accessibleName().isEmpty())
    fNative->widget->setAccessibleName(QString::fromStdString(fName));
  window.Native().Add(*fNative);
}

Control::~Control() {
  fWindow.Native().Remove(*fNative);
}

Rect Control::Place() const {
  return fNative->place;
}

void Control::SetPlace(const Rect& place) {
  fNative->place = place;
  fWindow.Native().Relayout();
}

bool Control::Visible() const {
  return !fNative->widget->isHidden();
}

void Control::SetVisible(bool visible) {
  fNative->widget->setVisible(visible);
  fWindow.Native().Relayout();
}

void Control::SetEnabled(bool enabled) {
  fNative->widget->setEnabled(enabled);
}

void Control::SetFocus() {
  fNative->widget->setFocus();
}

void Control::Refresh() {
  fNative->widget->repaint();
}

PushButton::PushButton(Window& window, std::string name, const Rect& place, const std::string& caption,
                       Role role, Lock lock)
    : Control(window, std::move(name), place, lock, Made(new QPushButton)) {
  auto& button = As<QPushButton>(Native());
  button.setAutoDefault(true);
  SetRole(role);
  QObject::connect(&button, &QPushButton::clicked, &button, [native = &Native()] {
    if (native->action) native->action();
  });
  SetCaption(caption);
}

void PushButton::SetRole(Role role) {
  auto& button = As<QPushButton>(Native());
  Native().role = role;
  button.setDefault(role == Default);
  if (role == Default) button.setFocus();
}

void PushButton::SetCaption(const std::string& caption) {
  fCaption = caption;
  Native().caption = CaptionLine(caption);
  Native().widget->setAccessibleName(Native().caption);
  // Cut to its room, if need be, by the window.
  As<QPushButton>(Native()).setText(WithoutMnemonic(Native().caption));
  Owner().Native().Relayout();
}

void PushButton::OnAction(std::function<void()> action) {
  Native().action = std::move(action);
}

Toggle::Toggle(Window& window, std::string name, const Rect& place, const std::string& caption,
               std::unique_ptr<NativeControl> native)
    : Control(window, std::move(name), place, Lock::None, std::move(native)) {
  SetCaption(caption);
}

void Toggle::SetCaption(const std::string& caption) {
  fCaption = caption;
  WithToggle(Native(), [&caption](auto& toggle) { toggle.ShowCaption(CaptionLine(caption)); });
}

void Toggle::SetHelpTag(const std::string& tag) {
  WithToggle(Native(), [&tag](auto& toggle) { toggle.ShowTag(QString::fromStdString(tag)); });
}

bool Toggle::Value() const {
  return As<QAbstractButton>(Native()).isChecked();
}

void Toggle::SetValue(bool on) {
  As<QAbstractButton>(Native()).setChecked(on);
}

RadioButton::RadioButton(Window& window, std::string name, const Rect& place, const std::string& caption)
    : Toggle(window, std::move(name), place, caption, Made(new NativeToggle<QRadioButton>)) {}

CheckBox::CheckBox(Window& window, std::string name, const Rect& place, const std::string& caption)
    : Toggle(window, std::move(name), place, caption, Made(new NativeToggle<QCheckBox>)) {}

Label::Label(Window& window, std::string name, const Rect& place, const std::string& text, Style style)
    : Control(window, std::move(name), place, Lock::None, Made(MadeLabel(style))) {
  SetText(text);
}

void Label::SetText(const std::string& text) {
  fText = text;
  As<NativeLabel>(Native()).ShowText(QString::fromStdString(text));
}

void Label::SetAlignment(Alignment alignment) {
  auto& label = As<NativeLabel>(Native());
  const Qt::Alignment vertical = label.alignment() & Qt::AlignVertical_Mask;
  label.setAlignment(vertical | (alignment == Alignment::Centre ? Qt::AlignHCenter : Qt::AlignLeft));
}

void Label::OnMouseDown(std::function<void()> action) {
  As<NativeLabel>(Native()).fPressed = std::move(action);
}

Canvas::Canvas(Window& window, std::string name, const Rect& place)
    : Control(window, std::move(name), place, Lock::None, Made(new QLabel)) {}

void Canvas::SetBackdrop(const Picture& picture) {
  auto& label = As<QLabel>(Native());
  label.setAlignment(Qt::AlignLeft | Qt::AlignTop);
  label.setPixmap(ToQt(picture));
}

ProgressBar::ProgressBar(Window& window, std::string name, const Rect& place, int maximum)
    : Control(window, std::move(name), place, Lock::None, Made(new QProgressBar)) {
  auto& bar = As<QProgressBar>(Native());
  bar.setTextVisible(false);
  bar.setRange(0, std::max(maximum, 1));
  bar.setValue(0);
}

int ProgressBar::Maximum() const {
  return As<QProgressBar>(Native()).maximum();
}

void ProgressBar::SetMaximum(int maximum) {
  As<QProgressBar>(Native()).setRange(0, std::max(maximum, 1));
}

int ProgressBar::Value() const {
  return As<QProgressBar>(Native()).value();
}

void ProgressBar::SetValue(int value) {
  As<QProgressBar>(Native()).setValue(std::clamp(value, 0, Maximum()));
}

TextField::TextField(Window& window, std::string name, const Rect& place, const std::string& hint)
    : Control(window, std::move(name), place, Lock::None, Made(new QLineEdit)) {
  As<QLineEdit>(Native()).setPlaceholderText(QString::fromStdString(hint));
}

std::string TextField::Text() const {
  return As<QLineEdit>(Native()).text().toStdString();
}

Secret TextField::TakeSecret() {
  auto& field = As<QLineEdit>(Native());
  const QString text = field.text();
  QByteArray bytes = text.toUtf8();
  Secret secret(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
  ::explicit_bzero(bytes.data(), static_cast<std::size_t>(bytes.size()));
  // The field and this text share their characters.
  ::explicit_bzero(const_cast<QChar*>(text.constData()),
                   static_cast<std::size_t>(text.size()) * sizeof(QChar));
  field.setText(QString());
  return secret;
}

TextArea::TextArea(Window& window, std::string name, const Rect& place, Lock lock, Style style)
    : Control(window, std::move(name), place, lock, Made(new NativeText)) {
  if (style == Message) As<NativeText>(Native()).LookLikeALabel();
}

void TextArea::SetText(const std::string& text) {
  fText = text;
  As<NativeText>(Native()).ShowText(QString::fromStdString(text));
}

HTMLViewer::HTMLViewer(Window& window, std::string name, const Rect& place, Lock lock)
    : Control(window, std::move(name), place, lock, Made(new NativeViewer)) {}

void HTMLViewer::LoadPage(const std::string& html) {
  As<NativeViewer>(Native()).ShowPage(QString::fromStdString(html));
}

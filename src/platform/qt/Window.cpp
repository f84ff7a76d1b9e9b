// SPDX-License-Identifier: MIT
#include "platform/Window.h"

#include "platform/qt/NativeWindow.h"

Window::Window(Size size, const std::string& title, const WindowStyle& style)
    : fNative(std::make_unique<NativeWindow>(*this, size, title, style)) {}

Window::~Window() = default;

std::string Window::Title() const {
  return fNative->Title();
}

void Window::SetTitle(const std::string& title) {
  fNative->SetTitle(title);
}

Size Window::ContentSize() const {
  return {fNative->width(), fNative->height()};
}

void Window::Resize(Size size) {
  fNative->ResizeTo(size);
}

void Window::SetBackdrop(const Picture& picture) {
  fNative->SetBackdrop(ToQt(picture));
}

void Window::Show() {
  fNative->show();
}

void Window::Hide() {
  fNative->EndModal();
}

bool Window::Visible() const {
  return fNative->isVisible();
}

void Window::GuardAnswers() {
  fNative->GuardAnswers();
}

void Window::ShowModal() {
  fNative->RunModal();
}

void Window::SetFocus() {
  fNative->activateWindow();
}

void Window::ToFront() {
  fNative->raise();
  fNative->activateWindow();
}

void Window::Refresh() {
  fNative->repaint();
}

bool Window::Event_CancelClose(bool /*appQuitting*/) {
  return false;
}

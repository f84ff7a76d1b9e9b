// SPDX-License-Identifier: MIT
#include "platform/posix/X11Clipboard.h"

#include <chrono>
#include <cstdlib>
#include <string_view>

#include "platform/posix/X11.h"

namespace {

constexpr std::chrono::seconds kPatience(2);
constexpr std::uint32_t kMostWords = 1U << 18;  // of four bytes

/// A connection of its own, so that waiting disturbs nobody.
class Reader {
 public:
  Reader() : fDisplay(xcb_connect(nullptr, nullptr)) {
    if (xcb_connection_has_error(fDisplay) != 0) return;
    fWindow = xcb_generate_id(fDisplay);
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(fDisplay)).data;
    xcb_create_window(fDisplay, 0, fWindow, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
  }
  ~Reader() { xcb_disconnect(fDisplay); }
  Reader(const Reader&) = delete;
  Reader& operator=(const Reader&) = delete;

  bool Connected() const { return xcb_connection_has_error(fDisplay) == 0; }

  /// Asks for the selection as `target`; false when nobody answers. No property: it can't be had so.
  bool Ask(const char* target, xcb_atom_t& property, const std::function<void()>& wait) {
    xcb_convert_selection(fDisplay, fWindow, Atom("CLIPBOARD"), Atom(target), Atom("TESSARINE_CLIPBOARD"),
                          XCB_CURRENT_TIME);
    xcb_flush(fDisplay);
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (Connected() && std::chrono::steady_clock::now() < end) {
      const Reply<xcb_generic_event_t> event(xcb_poll_for_event(fDisplay), std::free);
      if (event == nullptr) {
        wait();
      } else if ((event->response_type & 0x7f) == XCB_SELECTION_NOTIFY) {
        property = reinterpret_cast<const xcb_selection_notify_event_t*>(event.get())->property;
        return true;
      }
    }
    return false;
  }

  /// False for a text that comes in pieces.
  bool Take(xcb_atom_t property, std::string& text) {
    const Reply<xcb_get_property_reply_t> value(
        xcb_get_property_reply(
            fDisplay, xcb_get_property(fDisplay, 1, fWindow, property, XCB_ATOM_ANY, 0, kMostWords), nullptr),
        std::free);
    if (value == nullptr || value->format != 8 || value->bytes_after != 0) return false;
    text.assign(static_cast<const char*>(xcb_get_property_value(value.get())),
                static_cast<std::size_t>(xcb_get_property_value_length(value.get())));
    return true;
  }

 private:
  xcb_atom_t Atom(std::string_view name) { return InternAtom(fDisplay, name); }

  xcb_connection_t* fDisplay;
  xcb_window_t fWindow = XCB_WINDOW_NONE;
};

std::string FromLatin1(const std::string& bytes) {
  std::string text;
  for (const char byte : bytes) {
    const auto code = static_cast<unsigned char>(byte);
    if (code >= 0x80) text += static_cast<char>(0xC0 | (code >> 6));
    text += static_cast<char>(code >= 0x80 ? 0x80 | (code & 0x3F) : code);
  }
  return text;
}

}  // namespace

ClipboardAnswer ReadX11Clipboard(std::string& text, const std::function<void()>& wait) {
  Reader reader;
  text.clear();
  if (!reader.Connected()) return ClipboardAnswer::kElsewhere;
  for (const char* target : {"UTF8_STRING", "STRING"}) {
    xcb_atom_t property = XCB_ATOM_NONE;
    if (!reader.Ask(target, property, wait)) return ClipboardAnswer::kSilence;
    if (property == XCB_ATOM_NONE) continue;
    if (!reader.Take(property, text)) return ClipboardAnswer::kElsewhere;
    if (*target == 'S') text = FromLatin1(text);
    return ClipboardAnswer::kText;
  }
  return ClipboardAnswer::kText;
}

// SPDX-License-Identifier: MIT
// A client of the X display that is never seen: what reading a selection and keeping one have in common.
#pragma once

#include <xcb/xcb.h>

#include <chrono>
#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

/// What the server sends is the receiver's to free.
template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;
using Event = Reply<xcb_generic_event_t>;
using Moment = std::chrono::steady_clock::time_point;

/// The event as what it is; nothing where it is of another kind.
template <typename T>
const T* As(const Event& event, int kind) {
  return (event->response_type & 0x7f) == kind ? reinterpret_cast<const T*>(event.get()) : nullptr;
}

/// A connection to $DISPLAY of its own, so that waiting disturbs nobody, with a window that hears of changes
/// of its properties.
class X11Client {
 public:
  X11Client();
  ~X11Client() { xcb_disconnect(fDisplay); }
  X11Client(const X11Client&) = delete;
  X11Client& operator=(const X11Client&) = delete;

  /// False without a display, and once it's gone.
  bool Connected() const { return xcb_connection_has_error(fDisplay) == 0; }
  xcb_connection_t* Display() const { return fDisplay; }
  xcb_window_t Window() const { return fWindow; }
  xcb_atom_t Clipboard() const { return fClipboard; }
  /// Of a value that is handed over in pieces.
  xcb_atom_t Pieces() const { return fPieces; }

  /// The server's number for a name; XCB_ATOM_NONE when the connection is broken.
  xcb_atom_t Atom(std::string_view name) const;
  /// The window that the clipboard belongs to, or XCB_WINDOW_NONE.
  xcb_window_t ClipboardOwner() const;
  /// Has this client hear what `mask` says of a window. A window that has gone is the event loop's to learn.
  void Listen(xcb_window_t window, std::uint32_t mask) const;
  /// Up to `words` of four bytes of a property, from the word `from` on; with `deletes` it goes once its end
  /// was read. Nothing when the window has gone.
  Reply<xcb_get_property_reply_t> Property(xcb_window_t window, xcb_atom_t property, std::uint32_t from,
                                           std::uint32_t words, bool deletes) const;

  /// Sends what is to be sent and waits for an event, which may be an error; nothing when `until` has passed
  /// or the connection broke.
  Event Next(Moment until) const;

 private:
  xcb_connection_t* fDisplay;
  xcb_window_t fWindow = XCB_WINDOW_NONE;
  xcb_atom_t fClipboard = XCB_ATOM_NONE;
  xcb_atom_t fPieces = XCB_ATOM_NONE;
};

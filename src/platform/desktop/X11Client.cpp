// SPDX-License-Identifier: MIT
#include "platform/desktop/X11Client.h"

#include <poll.h>

#include <algorithm>

X11Client::X11Client() : fDisplay(xcb_connect(nullptr, nullptr)) {
  if (!Connected()) return;
  fWindow = xcb_generate_id(fDisplay);
  const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(fDisplay)).data;
  xcb_create_window(fDisplay, 0, fWindow, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, 0, nullptr);
  Listen(fWindow, XCB_EVENT_MASK_PROPERTY_CHANGE);
  fClipboard = Atom("CLIPBOARD");
  fPieces = Atom("INCR");
}

xcb_atom_t X11Client::Atom(std::string_view name) const {
  const xcb_intern_atom_cookie_t question =
      xcb_intern_atom(fDisplay, 0, static_cast<std::uint16_t>(name.size()), name.data());
  const Reply<xcb_intern_atom_reply_t> atom(xcb_intern_atom_reply(fDisplay, question, nullptr), std::free);
  return atom == nullptr ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : atom->atom;
}

xcb_window_t X11Client::ClipboardOwner() const {
  const xcb_get_selection_owner_cookie_t question = xcb_get_selection_owner(fDisplay, fClipboard);
  const Reply<xcb_get_selection_owner_reply_t> answer(
      xcb_get_selection_owner_reply(fDisplay, question, nullptr), std::free);
  return answer == nullptr ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : answer->owner;
}

void X11Client::Listen(xcb_window_t window, std::uint32_t mask) const {
  xcb_change_window_attributes(fDisplay, window, XCB_CW_EVENT_MASK, &mask);
}

Reply<xcb_get_property_reply_t> X11Client::Property(xcb_window_t window, xcb_atom_t property,
                                                    std::uint32_t from, std::uint32_t words,
                                                    bool deletes) const {
  const xcb_get_property_cookie_t question =
      xcb_get_property(fDisplay, deletes ? 1 : 0, window, property, XCB_ATOM_ANY, from, words);
  return {xcb_get_property_reply(fDisplay, question, nullptr), std::free};
}

Event X11Client::Next(Moment until) const {
  using std::chrono::milliseconds;
  constexpr milliseconds kLongest(3'600'000);  // what poll(2) takes is an int
  xcb_flush(fDisplay);
  while (Connected()) {
    // Waiting for a reply may have brought events in: the queue comes before the socket.
    if (Event event{xcb_poll_for_event(fDisplay), std::free}) return event;
    const milliseconds left = std::chrono::ceil<milliseconds>(until - std::chrono::steady_clock::now());
    if (left <= milliseconds::zero()) break;
    pollfd socket{xcb_get_file_descriptor(fDisplay), POLLIN, 0};
    static_cast<void>(::poll(&socket, 1, static_cast<int>(std::min(left, kLongest).count())));
  }
  return {nullptr, std::free};
}

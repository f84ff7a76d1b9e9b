// SPDX-License-Identifier: MIT
// The other side of a clipboard case, which shares no code with what is tried but the freeing of replies.
#pragma once

#include <gtest/gtest.h>
#include <poll.h>

#include <array>
#include <cstring>
#include <functional>
#include <string>
#include <utility>

#include "platform/desktop/X11Client.h"

/// An owner or a reader of the clipboard, as bare as it can be.
class BareClient {
 public:
  xcb_connection_t* fDisplay = xcb_connect(nullptr, nullptr);
  xcb_window_t fWindow = xcb_generate_id(fDisplay);
  /// What the owner does when it is asked, and when a piece has been taken.
  std::function<void(const xcb_selection_request_event_t&)> fAsked;
  std::function<void(const xcb_property_notify_event_t&)> fTaken;

  BareClient() {
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(fDisplay)).data->root;
    xcb_create_window(fDisplay, 0, fWindow, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, 0, 0, nullptr);
    Listen(fWindow);
  }
  ~BareClient() { End(); }
  BareClient(const BareClient&) = delete;
  BareClient& operator=(const BareClient&) = delete;

  void End() {
    if (fDisplay != nullptr) xcb_disconnect(std::exchange(fDisplay, nullptr));
  }
  void Listen(xcb_window_t window) {
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(fDisplay, window, XCB_CW_EVENT_MASK, &mask);
  }
  xcb_atom_t Atom(const char* name) {
    const auto question = xcb_intern_atom(fDisplay, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
    return Reply<xcb_intern_atom_reply_t>(xcb_intern_atom_reply(fDisplay, question, nullptr), std::free)
        ->atom;
  }
  void Own() {
    xcb_set_selection_owner(fDisplay, fWindow, Atom("CLIPBOARD"), XCB_CURRENT_TIME);
    std::free(xcb_get_input_focus_reply(fDisplay, xcb_get_input_focus(fDisplay), nullptr));
  }
  void Put(xcb_window_t window, xcb_atom_t property, const char* type, std::uint8_t format,
           const std::string& bytes) {
    xcb_change_property(fDisplay, XCB_PROP_MODE_REPLACE, window, property, Atom(type), format,
                        static_cast<std::uint32_t>(bytes.size() * 8 / format), bytes.data());
  }
  void Tell(const xcb_selection_request_event_t& request, bool given) {
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    if (given) notice.property = request.property;
    std::array<char, 32> bytes{};
    std::memcpy(bytes.data(), &notice, sizeof notice);
    xcb_send_event(fDisplay, 0, request.requestor, 0, bytes.data());
  }
  void Give(const xcb_selection_request_event_t& request, const char* type, std::uint8_t format,
            const std::string& bytes) {
    Listen(request.requestor);
    Put(request.requestor, request.property, type, format, bytes);
    Tell(request, true);
  }
  /// Answers what has come so far.
  void Work() {
    while (fDisplay != nullptr) {
      xcb_flush(fDisplay);
      const Event event(xcb_poll_for_event(fDisplay), std::free);
      if (event == nullptr) return;
      const auto* request = As<xcb_selection_request_event_t>(event, XCB_SELECTION_REQUEST);
      if (request != nullptr && fAsked) fAsked(*request);
      const auto* change = As<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
      if (change != nullptr && change->state == XCB_PROPERTY_DELETE && fTaken) fTaken(*change);
    }
  }

  // As a reader: asks, and then takes one piece after the other.
  void Ask(const char* target) {
    xcb_convert_selection(fDisplay, fWindow, Atom("CLIPBOARD"), Atom(target), Atom("PIECE"),
                          XCB_CURRENT_TIME);
    Await([](const Event& event) { return As<xcb_generic_event_t>(event, XCB_SELECTION_NOTIFY) != nullptr; });
    EXPECT_EQ(Take(), Atom("INCR"));
    fText.clear();
  }
  /// False once the last one was taken.
  bool TakePiece() {
    if (fDone) return false;
    Await([](const Event& event) {
      const auto* change = As<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
      return change != nullptr && change->state == XCB_PROPERTY_NEW_VALUE;
    });
    const std::size_t before = fText.size();
    Take();
    fDone = fText.size() == before;
    return !fDone;
  }
  std::string fText;
  bool fDone = false;

 private:
  void Await(const std::function<bool(const Event&)>& isIt) {
    constexpr int kLongest = 10'000;  // milliseconds, where nothing will come any more
    pollfd socket{xcb_get_file_descriptor(fDisplay), POLLIN, 0};
    xcb_flush(fDisplay);
    do {
      while (const Event event{xcb_poll_for_event(fDisplay), std::free})
        if (isIt(event)) return;
    } while (xcb_connection_has_error(fDisplay) == 0 && ::poll(&socket, 1, kLongest) > 0);
    ADD_FAILURE() << "nobody answers";
    fDone = true;
  }
  xcb_atom_t Take() {
    const auto question = xcb_get_property(fDisplay, 1, fWindow, Atom("PIECE"), 0, 0, 1U << 20);
    const Reply<xcb_get_property_reply_t> value(xcb_get_property_reply(fDisplay, question, nullptr),
                                                std::free);
    fText.append(static_cast<const char*>(xcb_get_property_value(value.get())),
                 static_cast<std::size_t>(xcb_get_property_value_length(value.get())));
    return value->type;
  }
};

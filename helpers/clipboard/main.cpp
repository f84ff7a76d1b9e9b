// SPDX-License-Identifier: MIT
// Holds a text on the CLIPBOARD selection of the X display after the program that put it there has gone,
// until somebody else takes the selection. The text is its standard input, in UTF-8; it writes one line
// to its standard output once it holds the selection.
#include <unistd.h>
#include <xcb/xcb.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>

namespace {

/// What goes into one property without being sent in pieces.
constexpr std::size_t kLongestText = 200U << 10;

template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

std::string ReadAll() {
  std::string text;
  std::array<char, 4096> buffer{};
  while (text.size() <= kLongestText) {
    const ssize_t got = ::read(STDIN_FILENO, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    text.append(buffer.data(), static_cast<std::size_t>(got));
  }
  return text;
}

class Keeper {
 public:
  Keeper(xcb_connection_t* display, std::string text) : fDisplay(display), fText(std::move(text)) {
    const xcb_screen_t* screen = xcb_setup_roots_iterator(xcb_get_setup(display)).data;
    fWindow = xcb_generate_id(display);
    xcb_create_window(display, 0, fWindow, screen->root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                      XCB_COPY_FROM_PARENT, 0, nullptr);
    fClipboard = Atom("CLIPBOARD");
    fTargets = Atom("TARGETS");
    fUtf8 = Atom("UTF8_STRING");
    fText8 = Atom("text/plain;charset=utf-8");
  }

  bool Take() {
    xcb_set_selection_owner(fDisplay, fWindow, fClipboard, XCB_CURRENT_TIME);
    const Reply<xcb_get_selection_owner_reply_t> owner(
        xcb_get_selection_owner_reply(fDisplay, xcb_get_selection_owner(fDisplay, fClipboard), nullptr),
        std::free);
    return owner != nullptr && owner->owner == fWindow;
  }

  void Serve() {
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(fDisplay), std::free}) {
      const int type = event->response_type & 0x7f;
      if (type == XCB_SELECTION_CLEAR) return;
      if (type == XCB_SELECTION_REQUEST)
        Answer(*reinterpret_cast<const xcb_selection_request_event_t*>(event.get()));
    }
  }

 private:
  xcb_atom_t Atom(const char* name) {
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const Reply<xcb_intern_atom_reply_t> atom(
        xcb_intern_atom_reply(fDisplay, xcb_intern_atom(fDisplay, 0, length, name), nullptr), std::free);
    return atom == nullptr ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : atom->atom;
  }

  void Answer(const xcb_selection_request_event_t& request) {
    xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    if (request.target == fTargets) {
      const std::array<xcb_atom_t, 4> targets{fTargets, fUtf8, fText8, XCB_ATOM_STRING};
      xcb_change_property(fDisplay, XCB_PROP_MODE_REPLACE, request.requestor, property, XCB_ATOM_ATOM, 32,
                          static_cast<std::uint32_t>(targets.size()), targets.data());
    } else if (request.target == fUtf8 || request.target == fText8 || request.target == XCB_ATOM_STRING) {
      xcb_change_property(fDisplay, XCB_PROP_MODE_REPLACE, request.requestor, property, request.target, 8,
                          static_cast<std::uint32_t>(fText.size()), fText.data());
    } else {
      property = XCB_ATOM_NONE;
    }
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    std::array<char, 32> event{};  // events are sent at their full size
    std::memcpy(event.data(), &notice, sizeof notice);
    xcb_send_event(fDisplay, 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.data());
    xcb_flush(fDisplay);
  }

  xcb_connection_t* fDisplay;
  const std::string fText;
  xcb_window_t fWindow = 0;
  xcb_atom_t fClipboard = 0;
  xcb_atom_t fTargets = 0;
  xcb_atom_t fUtf8 = 0;
  xcb_atom_t fText8 = 0;
};

}  // namespace

int main() {
  const std::string text = ReadAll();
  if (text.empty() || text.size() > kLongestText) return 1;
  xcb_connection_t* display = xcb_connect(nullptr, nullptr);
  if (xcb_connection_has_error(display) == 0) {
    Keeper keeper(display, text);
    if (keeper.Take()) {
      // Whoever started this may have gone already.
      static_cast<void>(::write(STDOUT_FILENO, "held\n", 5) == 5);
      ::close(STDOUT_FILENO);
      keeper.Serve();
    }
  }
  xcb_disconnect(display);
  return 0;
}

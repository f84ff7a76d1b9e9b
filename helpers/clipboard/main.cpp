// SPDX-License-Identifier: MIT
// Holds a text on the CLIPBOARD selection of the X display after the program that put it there has gone,
// until somebody else takes the selection. The text is its standard input, in UTF-8; it writes one line
// to its standard output once it holds the selection.
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/sendfile.h>
#include <sys/stat.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

#include "platform/posix/X11.h"

namespace {

/// What goes into one property without being sent in pieces.
constexpr std::size_t kLongestText = 200U << 10;

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

/// Goes on as a copy in memory, outside of any folder: a disc that the installer came on can be ejected.
void LeaveTheDisc(char** arguments) {
  constexpr std::string_view kName = "clipboard";
  if (arguments[0] == kName) return;
  struct stat facts {};
  const int own = ::open("/proc/self/exe", O_RDONLY | O_CLOEXEC);
  const int copy = ::memfd_create(kName.data(), MFD_CLOEXEC);
  if (::chdir("/") != 0 || own < 0 || copy < 0 || ::fstat(own, &facts) != 0) return;
  for (off_t done = 0; done < facts.st_size;)
    if (::sendfile(copy, own, &done, static_cast<std::size_t>(facts.st_size - done)) <= 0) return;
  const std::array<char*, 2> words{const_cast<char*>(kName.data()), nullptr};
  ::fexecve(copy, words.data(), environ);  // where that is forbidden the program goes on as it is
}

/// For readers of old: characters beyond Latin-1 become question marks.
std::string Latin1(std::string_view utf8) {
  std::string text;
  for (std::size_t i = 0; i < utf8.size(); ++i) {
    const auto byte = static_cast<unsigned char>(utf8[i]);
    if (byte < 0x80) {
      text += utf8[i];
    } else if ((byte == 0xC2 || byte == 0xC3) && i + 1 < utf8.size()) {
      text += static_cast<char>((byte << 6) | (static_cast<unsigned char>(utf8[++i]) & 0x3F));
    } else if (byte >= 0xC0) {
      text += '?';
    }
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
    const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(display, fWindow, XCB_CW_EVENT_MASK, &events);
    fClipboard = Atom("CLIPBOARD");
    fTargets = Atom("TARGETS");
    fTimestamp = Atom("TIMESTAMP");
    fMultiple = Atom("MULTIPLE");
    fAtomPair = Atom("ATOM_PAIR");
    fUtf8 = Atom("UTF8_STRING");
    fAnyText = Atom("TEXT");
    fText8 = Atom("text/plain;charset=utf-8");
  }

  bool Take() {
    fTime = Now();
    xcb_set_selection_owner(fDisplay, fWindow, fClipboard, fTime);
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
  xcb_atom_t Atom(std::string_view name) { return InternAtom(fDisplay, name); }

  /// The server's time, from the notice of a property's change.
  xcb_timestamp_t Now() {
    xcb_change_property(fDisplay, XCB_PROP_MODE_APPEND, fWindow, fClipboard, XCB_ATOM_STRING, 8, 0, nullptr);
    xcb_flush(fDisplay);
    while (const Reply<xcb_generic_event_t> event{xcb_wait_for_event(fDisplay), std::free})
      if ((event->response_type & 0x7f) == XCB_PROPERTY_NOTIFY)
        return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
    return XCB_CURRENT_TIME;
  }

  template <typename Item>
  bool Put(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const Item* items, std::size_t count) {
    xcb_change_property(fDisplay, XCB_PROP_MODE_REPLACE, window, property, type, 8 * sizeof(Item),
                        static_cast<std::uint32_t>(count), items);
    return true;
  }

  /// The targets that every owner of a selection has, and the text.
  bool Convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property) {
    if (target == fTargets) {
      const std::array<xcb_atom_t, 7> targets{fTargets, fTimestamp, fMultiple,      fUtf8,
                                              fText8,   fAnyText,   XCB_ATOM_STRING};
      return Put(window, property, XCB_ATOM_ATOM, targets.data(), targets.size());
    }
    if (target == fTimestamp) return Put(window, property, XCB_ATOM_INTEGER, &fTime, 1);
    if (target == fMultiple) return ConvertEach(window, property);
    if (target == XCB_ATOM_STRING) {
      const std::string text = Latin1(fText);
      return Put(window, property, target, text.data(), text.size());
    }
    if (target != fUtf8 && target != fText8 && target != fAnyText) return false;
    return Put(window, property, target == fAnyText ? fUtf8 : target, fText.data(), fText.size());
  }

  /// Pairs of target and property; a target that can't be had loses its property's name.
  bool ConvertEach(xcb_window_t window, xcb_atom_t property) {
    constexpr std::uint32_t kMost = 64;
    const Reply<xcb_get_property_reply_t> list(
        xcb_get_property_reply(fDisplay, xcb_get_property(fDisplay, 0, window, property, fAtomPair, 0, kMost),
                               nullptr),
        std::free);
    if (list == nullptr || list->format != 32) return false;
    auto* pairs = static_cast<xcb_atom_t*>(xcb_get_property_value(list.get()));
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(list.get())) / sizeof *pairs;
    for (std::size_t i = 0; i + 1 < count; i += 2)
      if (pairs[i] == fMultiple || !Convert(window, pairs[i], pairs[i + 1])) pairs[i + 1] = XCB_ATOM_NONE;
    return Put(window, property, fAtomPair, pairs, count);
  }

  void Answer(const xcb_selection_request_event_t& request) {
    xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    if (!Convert(request.requestor, request.target, property)) property = XCB_ATOM_NONE;
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
  xcb_timestamp_t fTime = XCB_CURRENT_TIME;
  xcb_atom_t fTargets = 0;
  xcb_atom_t fTimestamp = 0;
  xcb_atom_t fMultiple = 0;
  xcb_atom_t fAtomPair = 0;
  xcb_atom_t fAnyText = 0;
  xcb_atom_t fUtf8 = 0;
  xcb_atom_t fText8 = 0;
};

}  // namespace

int main(int /*count*/, char** arguments) {
  LeaveTheDisc(arguments);
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

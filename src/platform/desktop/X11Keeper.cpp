// SPDX-License-Identifier: MIT
#include "platform/desktop/X11Keeper.h"

#include <array>
#include <cstring>
#include <optional>
#include <utility>

#include "base/Encoding.h"
#include "platform/desktop/X11Transfers.h"

namespace {

class Keeper {
 public:
  Keeper(std::string text, std::chrono::milliseconds patience)
      : fText(std::move(text)), fTransfers(fClient, patience) {}

  bool Take() {
    if (!fClient.Connected()) return false;
    fTime = Now();
    xcb_set_selection_owner(fClient.Display(), fClient.Window(), fClient.Clipboard(), fTime);
    return fClient.ClipboardOwner() == fClient.Window();
  }

  /// Whoever is being served when the clipboard goes to somebody else is served to the end.
  void Serve() {
    bool owned = true;
    while (fClient.Connected() && (owned || !fTransfers.Empty())) {
      const Event event = fClient.Next(fTransfers.NextDrop());
      fTransfers.DropSilent();
      if (event == nullptr) continue;
      if (As<xcb_selection_clear_event_t>(event, XCB_SELECTION_CLEAR) != nullptr) owned = false;
      if (const auto* request = As<xcb_selection_request_event_t>(event, XCB_SELECTION_REQUEST))
        Answer(*request);
      fTransfers.Heed(event);
    }
    // The answer says that the last piece has arrived, too: a connection that ends sends nothing more.
    static_cast<void>(fClient.ClipboardOwner());
  }

 private:
  /// The server's time, from the notice of a property's change.
  xcb_timestamp_t Now() {
    xcb_change_property(fClient.Display(), XCB_PROP_MODE_APPEND, fClient.Window(), fClient.Clipboard(),
                        XCB_ATOM_STRING, 8, 0, nullptr);
    while (const Event event = fClient.Next(Moment::max()))
      if (const auto* change = As<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY))
        return change->time;
    return XCB_CURRENT_TIME;
  }

  bool PutNumbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::uint32_t* numbers,
                  std::size_t count) {
    xcb_change_property(fClient.Display(), XCB_PROP_MODE_REPLACE, window, property, type, 32,
                        static_cast<std::uint32_t>(count), numbers);
    return true;
  }

  bool PutText(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, const std::string& text) {
    fTransfers.Begin(window, property, type, text);
    return true;
  }

  /// The targets that every owner of a selection has, and the text.
  bool Convert(xcb_window_t window, xcb_atom_t target, xcb_atom_t property) {
    if (target == fTargets) {
      const std::array<xcb_atom_t, 7> targets{fTargets, fTimestamp, fMultiple,      fUtf8,
                                              fText8,   fAnyText,   XCB_ATOM_STRING};
      return PutNumbers(window, property, XCB_ATOM_ATOM, targets.data(), targets.size());
    }
    if (target == fTimestamp) return PutNumbers(window, property, XCB_ATOM_INTEGER, &fTime, 1);
    if (target == fMultiple) return ConvertEach(window, property);
    if (target == XCB_ATOM_STRING) {
      if (!fLatin1) fLatin1 = Utf8ToLatin1(fText);
      return PutText(window, property, target, *fLatin1);
    }
    if (target != fUtf8 && target != fText8 && target != fAnyText) return false;
    return PutText(window, property, target == fAnyText ? fUtf8 : target, fText);
  }

  /// Pairs of target and property; a target that can't be had loses its property's name.
  bool ConvertEach(xcb_window_t window, xcb_atom_t property) {
    constexpr std::uint32_t kMost = 64;
    const auto list = fClient.Property(window, property, 0, kMost, false);
    if (list == nullptr || list->format != 32) return false;
    auto* pairs = static_cast<xcb_atom_t*>(xcb_get_property_value(list.get()));
    const auto count = static_cast<std::size_t>(xcb_get_property_value_length(list.get())) / sizeof *pairs;
    for (std::size_t i = 0; i + 1 < count; i += 2)
      if (pairs[i] == fMultiple || pairs[i + 1] == XCB_ATOM_NONE || !Convert(window, pairs[i], pairs[i + 1]))
        pairs[i + 1] = XCB_ATOM_NONE;
    return PutNumbers(window, property, fAtomPair, pairs, count);
  }

  void Answer(const xcb_selection_request_event_t& request) {
    xcb_atom_t property = request.property != XCB_ATOM_NONE ? request.property : request.target;
    // The pairs of a question for several lie in the property: without one there is nothing to answer.
    const bool asksNothing = request.target == fMultiple && request.property == XCB_ATOM_NONE;
    if (asksNothing || !Convert(request.requestor, request.target, property)) property = XCB_ATOM_NONE;
    xcb_selection_notify_event_t notice{};
    notice.response_type = XCB_SELECTION_NOTIFY;
    notice.time = request.time;
    notice.requestor = request.requestor;
    notice.selection = request.selection;
    notice.target = request.target;
    notice.property = property;
    std::array<char, 32> event{};  // events are sent at their full size
    std::memcpy(event.data(), &notice, sizeof notice);
    xcb_send_event(fClient.Display(), 0, request.requestor, XCB_EVENT_MASK_NO_EVENT, event.data());
  }

  X11Client fClient;
  const std::string fText;
  std::optional<std::string> fLatin1;  // once somebody wanted it
  X11Transfers fTransfers;
  xcb_timestamp_t fTime = XCB_CURRENT_TIME;
  const xcb_atom_t fTargets = fClient.Atom("TARGETS");
  const xcb_atom_t fTimestamp = fClient.Atom("TIMESTAMP");
  const xcb_atom_t fMultiple = fClient.Atom("MULTIPLE");
  const xcb_atom_t fAtomPair = fClient.Atom("ATOM_PAIR");
  const xcb_atom_t fUtf8 = fClient.Atom("UTF8_STRING");
  const xcb_atom_t fAnyText = fClient.Atom("TEXT");
  const xcb_atom_t fText8 = fClient.Atom("text/plain;charset=utf-8");
};

}  // namespace

bool KeepX11Clipboard(std::string text, const std::function<void()>& held,
                      std::chrono::milliseconds patience) {
  Keeper keeper(std::move(text), patience);
  if (!keeper.Take()) return false;
  held();
  keeper.Serve();
  return true;
}

// SPDX-License-Identifier: MIT
#include "platform/desktop/X11Reader.h"

#include <string_view>

#include "base/Encoding.h"
#include "platform/desktop/X11Client.h"

namespace {

using std::chrono::milliseconds;
using Clock = std::chrono::steady_clock;

constexpr milliseconds kGlance(2);    // in which most owners have answered
constexpr milliseconds kStretch(20);  // without a call of `wait`
constexpr std::uint32_t kWords = 1U << 18;

enum class Outcome {
  kTaken,
  kRefused,  // it can't be had so
  kLost,     // nor in any other way
  kGone,     // the owner ended; there may be another by now
  kSilent
};

/// A value as the owner put it on this client's window.
struct Value {
  xcb_atom_t type = XCB_ATOM_NONE;  // none: there is no value
  bool holdsText = false;
  bool empty = true;
};

/// Some owners count the NUL behind their text as a part of it.
std::string_view UpToNul(std::string_view bytes) {
  return bytes.substr(0, bytes.find('\0'));
}

class Reader {
 public:
  Reader(const std::function<bool()>& wait, const ClipboardBounds& bounds)
      : fWait(wait), fBounds(bounds), fEnd(Clock::now() + bounds.whole) {}

  ClipboardAnswer Read(std::string& text) {
    if (!fClient.Connected()) return ClipboardAnswer::kElsewhere;
    Outcome outcome = Outcome::kGone;
    while (outcome == Outcome::kGone) {
      outcome = Fetch(fUtf8);
      if (outcome == Outcome::kRefused) outcome = Fetch(XCB_ATOM_STRING);
    }
    if (outcome == Outcome::kTaken && !fTooLong)
      text = fType == XCB_ATOM_STRING ? Latin1ToUtf8(UpToNul(fBytes)) : RepairUtf8(UpToNul(fBytes));
    return outcome == Outcome::kSilent ? ClipboardAnswer::kSilence : ClipboardAnswer::kText;
  }

 private:
  /// The owner's next event. Nothing when it's gone, or has taken too long.
  Event Next() {
    while (fClient.Connected() && Clock::now() < fEnd) {
      Event event = fClient.Next(Clock::now() + kGlance);
      const Moment now = Clock::now();
      if (event == nullptr && now >= fSilence) break;
      if (event == nullptr || now >= fWaitAgain) {
        if (!fWait()) break;
        fWaitAgain = Clock::now() + kStretch;
      }
      if (event == nullptr) continue;
      const auto* end = As<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY);
      if (end == nullptr || end->window != fOwner) return event;
      fGone = true;
      break;
    }
    return {nullptr, std::free};
  }

  /// Why there is no next event. Whoever goes on without an end has no text to give.
  Outcome Broken() const {
    if (fGone) return Outcome::kGone;
    return !fClient.Connected() || Clock::now() >= fEnd ? Outcome::kLost : Outcome::kSilent;
  }

  void ExpectMore() { fSilence = Clock::now() + fBounds.silence; }

  /// Asks for the text. Nobody takes the clipboard over between the look at its owner and the question: the
  /// end that is listened for is the end of who was asked. False where nobody owns it.
  bool Ask(xcb_atom_t target) {
    fGone = fTooLong = false;
    fBytes.clear();
    fType = XCB_ATOM_NONE;
    xcb_grab_server(fClient.Display());
    fOwner = fClient.ClipboardOwner();
    if (fOwner != XCB_WINDOW_NONE) {
      fClient.Listen(fOwner, XCB_EVENT_MASK_STRUCTURE_NOTIFY);
      xcb_convert_selection(fClient.Display(), fClient.Window(), fClient.Clipboard(), target, fProperty,
                            XCB_CURRENT_TIME);
    }
    xcb_ungrab_server(fClient.Display());
    ExpectMore();
    return fOwner != XCB_WINDOW_NONE;
  }

  Outcome Fetch(xcb_atom_t target) {
    if (!Ask(target)) return Outcome::kLost;
    while (const Event event = Next()) {
      const auto* notice = As<xcb_selection_notify_event_t>(event, XCB_SELECTION_NOTIFY);
      if (notice == nullptr || notice->target != target) continue;
      if (notice->property != fProperty) return Outcome::kRefused;
      const Value value = Take();
      if (value.type == fClient.Pieces()) return FetchPieces();
      return value.holdsText ? Outcome::kTaken : Outcome::kRefused;
    }
    return Broken();
  }

  /// Each piece comes when the one before has been deleted; an empty one is the end.
  Outcome FetchPieces() {
    fType = XCB_ATOM_NONE;
    ExpectMore();
    while (const Event event = Next()) {
      const auto* change = As<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
      if (change == nullptr || change->atom != fProperty || change->state != XCB_PROPERTY_NEW_VALUE) continue;
      const Value piece = Take();
      if (piece.type == XCB_ATOM_NONE) continue;  // news of a piece that has been taken already
      if (piece.empty) return Outcome::kTaken;
      if (!piece.holdsText) return Outcome::kLost;
      ExpectMore();
    }
    return Broken();
  }

  /// Takes what the owner has put down, and adds it to the text if it is one.
  Value Take() {
    Value value;
    for (std::uint32_t from = 0;; from += kWords) {
      const auto part = fClient.Property(fClient.Window(), fProperty, from, kWords, true);
      if (part == nullptr) return {};
      if (from == 0) value = Judge(*part);
      if (value.holdsText) Add(*part);
      if (part->bytes_after == 0) return value;
      if (value.holdsText && !fTooLong) continue;
      xcb_delete_property(fClient.Display(), fClient.Window(), fProperty);
      return value;
    }
  }

  Value Judge(const xcb_get_property_reply_t& part) {
    if (fType == XCB_ATOM_NONE) fType = part.type;
    const bool isText = part.format == 8 && (part.type == fUtf8 || part.type == XCB_ATOM_STRING);
    return {part.type, isText && part.type == fType, xcb_get_property_value_length(&part) == 0};
  }

  void Add(const xcb_get_property_reply_t& part) {
    const auto length = static_cast<std::size_t>(xcb_get_property_value_length(&part));
    fTooLong = fTooLong || length > fBounds.bytes - fBytes.size();
    if (fTooLong)
      fBytes = std::string();
    else
      fBytes.append(static_cast<const char*>(xcb_get_property_value(&part)), length);
  }

  X11Client fClient;
  const std::function<bool()>& fWait;
  const ClipboardBounds fBounds;
  const xcb_atom_t fUtf8 = fClient.Atom("UTF8_STRING");
  const xcb_atom_t fProperty = fClient.Atom("TESSARINE_CLIPBOARD");
  const Moment fEnd;
  Moment fSilence;
  Moment fWaitAgain = Clock::now() + kStretch;
  xcb_window_t fOwner = XCB_WINDOW_NONE;
  xcb_atom_t fType = XCB_ATOM_NONE;  // of the text, once some of it is there
  std::string fBytes;
  bool fTooLong = false;  // the rest is taken from the owner, and dropped
  bool fGone = false;
};

}  // namespace

ClipboardAnswer ReadX11Clipboard(std::string& text, const std::function<bool()>& wait,
                                 const ClipboardBounds& bounds) {
  text.clear();
  return Reader(wait, bounds).Read(text);
}

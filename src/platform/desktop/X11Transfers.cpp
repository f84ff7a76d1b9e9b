// SPDX-License-Identifier: MIT
#include "platform/desktop/X11Transfers.h"

#include <algorithm>

namespace {

/// What a request of every server takes, less what stands around the text in it.
std::size_t LongestPiece(xcb_connection_t* display) {
  constexpr std::size_t kUsual = 256U << 10;
  constexpr std::size_t kAround = 64;
  return std::min(kUsual, 4 * static_cast<std::size_t>(xcb_get_maximum_request_length(display)) - kAround);
}

}  // namespace

X11Transfers::X11Transfers(const X11Client& client, std::chrono::milliseconds patience)
    : fClient(client), fPatience(patience), fLongestPiece(LongestPiece(client.Display())) {}

template <typename Over>
void X11Transfers::EndWhere(const Over& over) {
  for (std::size_t i = 0; i < fTransfers.size();) {
    if (!over(fTransfers[i])) {
      ++i;
      continue;
    }
    const xcb_window_t window = fTransfers[i].window;
    fTransfers.erase(fTransfers.begin() + static_cast<std::ptrdiff_t>(i));
    const bool another = std::any_of(fTransfers.begin(), fTransfers.end(),
                                     [window](const Transfer& other) { return other.window == window; });
    if (!another) fClient.Listen(window, XCB_EVENT_MASK_NO_EVENT);
  }
}

void X11Transfers::Begin(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view text) {
  // Who asks anew for the same has given the earlier answer up.
  EndWhere([=](const Transfer& old) { return old.window == window && old.property == property; });
  const Transfer transfer{window, property, type, text, DropTime()};
  if (text.size() <= fLongestPiece) return Put(transfer, text);
  // Listened to first: the program may take the news at once.
  fClient.Listen(window, XCB_EVENT_MASK_PROPERTY_CHANGE | XCB_EVENT_MASK_STRUCTURE_NOTIFY);
  const auto atLeast = static_cast<std::uint32_t>(std::min<std::size_t>(text.size(), UINT32_MAX));
  xcb_change_property(fClient.Display(), XCB_PROP_MODE_REPLACE, window, property, fClient.Pieces(), 32, 1,
                      &atLeast);
  fTransfers.push_back(transfer);
}

void X11Transfers::Heed(const Event& event) {
  if (const auto* end = As<xcb_destroy_notify_event_t>(event, XCB_DESTROY_NOTIFY))
    return EndWhere([end](const Transfer& transfer) { return transfer.window == end->window; });
  const auto* change = As<xcb_property_notify_event_t>(event, XCB_PROPERTY_NOTIFY);
  if (change == nullptr || change->state != XCB_PROPERTY_DELETE) return;
  EndWhere([&](Transfer& transfer) {
    return transfer.window == change->window && transfer.property == change->atom && !PutNext(transfer);
  });
}

void X11Transfers::DropSilent() {
  const Moment now = std::chrono::steady_clock::now();
  EndWhere([now](const Transfer& transfer) { return transfer.drop <= now; });
}

Moment X11Transfers::NextDrop() const {
  Moment next = Moment::max();
  for (const Transfer& transfer : fTransfers) next = std::min(next, transfer.drop);
  return next;
}

void X11Transfers::Put(const Transfer& to, std::string_view piece) const {
  xcb_change_property(fClient.Display(), XCB_PROP_MODE_REPLACE, to.window, to.property, to.type, 8,
                      static_cast<std::uint32_t>(piece.size()), piece.data());
}

bool X11Transfers::PutNext(Transfer& transfer) const {
  const std::string_view piece = transfer.rest.substr(0, fLongestPiece);
  Put(transfer, piece);
  transfer.rest.remove_prefix(piece.size());
  transfer.drop = DropTime();
  return !piece.empty();  // an empty piece tells that there are no more
}

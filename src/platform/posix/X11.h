// SPDX-License-Identifier: MIT
// What every talk with an X server needs.
#pragma once

#include <xcb/xcb.h>

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <string_view>

/// What the server sends is the receiver's to free.
template <typename T>
using Reply = std::unique_ptr<T, decltype(&std::free)>;

/// The server's number for a name; XCB_ATOM_NONE when the connection is broken.
inline xcb_atom_t InternAtom(xcb_connection_t* display, std::string_view name) {
  const Reply<xcb_intern_atom_reply_t> atom(
      xcb_intern_atom_reply(display,
                            xcb_intern_atom(display, 0, static_cast<std::uint16_t>(name.size()), name.data()),
                            nullptr),
      std::free);
  return atom == nullptr ? static_cast<xcb_atom_t>(XCB_ATOM_NONE) : atom->atom;
}

// SPDX-License-Identifier: MIT
// Texts on their way to the programs that asked for them: in one piece, or in as many as it takes.
#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/desktop/X11Client.h"

class X11Transfers {
 public:
  /// A program that hasn't taken a piece within `patience` gets no more of them.
  X11Transfers(const X11Client& client, std::chrono::milliseconds patience);

  /// Puts `text`, which must stay as long as this object, on a program's window, or says there that it comes
  /// in pieces. The program isn't told yet.
  void Begin(xcb_window_t window, xcb_atom_t property, xcb_atom_t type, std::string_view text);
  /// Takes in an event: the program has taken a piece and gets the next, or it has gone.
  void Heed(const Event& event);
  /// Drops the programs that have been silent for too long.
  void DropSilent();
  /// When the next one will have been.
  Moment NextDrop() const;
  bool Empty() const { return fTransfers.empty(); }

 private:
  struct Transfer {
    xcb_window_t window;
    xcb_atom_t property;
    xcb_atom_t type;
    std::string_view rest;
    Moment drop;
  };

  Moment DropTime() const { return std::chrono::steady_clock::now() + fPatience; }
  void Put(const Transfer& to, std::string_view piece) const;
  /// False when that was the end.
  bool PutNext(Transfer& transfer) const;
  /// Ends those that `over` says so of, and listens to their programs no more.
  template <typename Over>
  void EndWhere(const Over& over);

  const X11Client& fClient;
  const std::chrono::milliseconds fPatience;
  const std::size_t fLongestPiece;
  std::vector<Transfer> fTransfers;
};

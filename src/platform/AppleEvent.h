// SPDX-License-Identifier: MIT
// Events to other programs of the user's session.
#pragma once

#include <string>

/// An event that carries one text. On the session's D-Bus it is a method call:
///   bus name    "org.tessarine." + signature, which the receiving program owns
///   object path "/org/tessarine/" + signature
///   interface   "org.tessarine." + eventClass
///   method      eventID
///   argument    one dictionary a{sv}, in which "----" is the text
/// So the codes are letters, digits and "_", no digit in front; with others nothing is sent.
struct AppleEvent {
  std::string signature;
  std::string eventClass;
  std::string eventID;
  std::string directParameter;  // UTF-8

  /// Waits up to `timeout` milliseconds for the receiver's answer; with 0 for none, only for the bus to take
  /// the event. Windows repaint meanwhile, and input is dropped: see Machine::DoEvents. False when there is
  /// no bus, no receiver, an answer that is an error, or none in time. No receiver is started, and no bus.
  [[nodiscard]] bool Send(int timeout) const;
};

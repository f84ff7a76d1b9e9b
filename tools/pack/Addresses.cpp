// SPDX-License-Identifier: MIT
#include "pack/Addresses.h"

#include <algorithm>

#include "base/WebAddress.h"
#include "pack/Text.h"

namespace pack {
namespace {

bool IsPort(const std::string& text) {
  return !text.empty() && text.size() < 6 && text.find_first_not_of("0123456789") == std::string::npos;
}

// "user@host:port" in front of the path; a host in brackets is a number with colons.
bool NamesHost(std::string place) {
  place.erase(0, place.rfind('@') + 1);
  if (place.starts_with('[')) return place.find(']') != std::string::npos;
  const std::size_t colon = place.find(':');
  const std::string host = place.substr(0, colon);
  const bool plain = std::none_of(host.begin(), host.end(), [](unsigned char c) {
    const bool letter = (c >= '0' && c <= '9') || ((c | 0x20) >= 'a' && (c | 0x20) <= 'z') || c >= 0x80;
    return !letter && c != '-' && c != '.' && c != '_';
  });
  return plain && !host.empty() && !host.starts_with('.') && host.find("..") == std::string::npos &&
         (colon == std::string::npos || IsPort(place.substr(colon + 1)));
}

}  // namespace

bool IsWebAddress(const std::string& text) {
  const std::string address = WebAddressOf(text);
  const std::size_t start = address.find("://");
  if (!LowerAscii(address).starts_with("http") || start == std::string::npos) return false;
  if (address.find_first_of(" <>\"") != std::string::npos) return false;
  return NamesHost(address.substr(start + 3, address.find_first_of("/?#", start + 3) - start - 3));
}

bool IsMailAddress(const std::string& text) {
  return LowerAscii(WebAddressOf(text)).starts_with("mailto:");
}

}  // namespace pack

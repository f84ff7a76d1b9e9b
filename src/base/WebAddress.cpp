// SPDX-License-Identifier: MIT
#include "base/WebAddress.h"

#include <strings.h>

#include <algorithm>

#include "base/Blanks.h"

std::string WebAddressOf(std::string_view text) {
  std::string address = WithoutBlanksAround(text);
  const auto begins = [&address](std::string_view scheme) {
    return ::strncasecmp(address.c_str(), scheme.data(), scheme.size()) == 0 &&
           address.size() > scheme.size();
  };
  const bool plain = std::none_of(address.begin(), address.end(), [](char byte) {
    return static_cast<unsigned char>(byte) < ' ' || byte == '\x7F';
  });
  if (!plain || !(begins("http://") || begins("https://") || begins("mailto:"))) address.clear();
  return address;
}

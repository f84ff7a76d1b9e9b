// SPDX-License-Identifier: MIT
#include "base/LinkText.h"

#include <unistd.h>

#include <climits>

std::string LinkText(const std::string& link) {
  std::string text(PATH_MAX, '\0');
  const ssize_t length = ::readlink(link.c_str(), text.data(), text.size());
  // As long as that it may have been cut.
  text.resize(length < 0 || length == PATH_MAX ? 0 : static_cast<std::size_t>(length));
  return text;
}

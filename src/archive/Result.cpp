// SPDX-License-Identifier: MIT
// Sentences for failures.
#include "archive/Result.h"

#include <cerrno>
#include <cstring>

#include "archive/reading/Utf8.h"

namespace archive {
namespace {

std::string Reason(int error) {
  if (error == 0) return "the file ends too early";
  if (error == ECANCELED) return "the expansion was stopped";
  return error == EBADMSG ? "what is packed there is damaged" : std::strerror(error);
}

}  // namespace

std::string Quoted(std::string_view name) {
  constexpr std::size_t kLongest = 240;
  constexpr char kHex[] = "0123456789ABCDEF";
  std::string quoted = "\"";
  while (!name.empty() && quoted.size() < kLongest) {
    const std::size_t length = Utf8Length(name);
    if (length == 0 || IsControl(name)) {
      const auto byte = static_cast<unsigned char>(name.front());
      quoted += {'\\', 'x', kHex[byte >> 4], kHex[byte & 15]};
      name.remove_prefix(1);
    } else {
      quoted += name.substr(0, length);
      name.remove_prefix(length);
    }
  }
  return quoted + (name.empty() ? "\"" : "…\"");
}

Status Interrupted() {
  return Fail("the expansion was stopped");
}

Status FailedCall(std::string_view what) {
  const int reason = errno;
  return Fail("could not ", what, ": ", Reason(reason));
}

Status FailedCall(std::string_view what, std::string_view name) {
  const int reason = errno;
  return Fail("could not ", what, " ", Quoted(name), ": ", Reason(reason));
}

}  // namespace archive

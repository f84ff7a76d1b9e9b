// SPDX-License-Identifier: MIT
#include "cleanup/Order.h"

namespace {

bool IsPlainElement(std::string_view element) {
  return !element.empty() && element != "." && element != "..";
}

}  // namespace

std::string PathOfOrder(std::string_view order) {
  std::string_view path;
  for (const std::string_view key : {"DeleteFile=", "DeleteFolder="})
    if (order.starts_with(key)) path = order.substr(key.size());
  if (!path.starts_with('/')) return "";
  for (std::string_view rest = path; !rest.empty();) {
    rest.remove_prefix(1);
    const std::string_view element = rest.substr(0, rest.find('/'));
    if (!IsPlainElement(element)) return "";
    rest.remove_prefix(element.size());
  }
  return std::string(path);
}

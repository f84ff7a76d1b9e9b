// SPDX-License-Identifier: MIT
#include "base/MountPoint.h"

#include <fcntl.h>
#include <linux/stat.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <fstream>
#include <sstream>

namespace {

/// Blanks and backslashes stand there as a backslash and three octal digits.
std::string Plain(const std::string& text) {
  std::string plain;
  for (std::size_t i = 0; i < text.size(); ++i) {
    const bool escaped = text[i] == '\\' && i + 3 < text.size();
    plain += escaped ? static_cast<char>(std::stoi(text.substr(i + 1, 3), nullptr, 8)) : text[i];
    if (escaped) i += 3;
  }
  return plain;
}

}  // namespace

std::vector<std::string> MountPoints() {
  std::vector<std::string> points;
  std::ifstream file("/proc/self/mountinfo");
  for (std::string line; std::getline(file, line);) {
    std::istringstream fields(line);
    std::string id, parent, device, root, point;
    if (fields >> id >> parent >> device >> root >> point) points.push_back(Plain(point));
  }
  return points;
}

bool IsMountPoint(int folder, const char* name) {
  struct statx item {};
  if (::statx(folder, name, AT_SYMLINK_NOFOLLOW | AT_NO_AUTOMOUNT, STATX_BASIC_STATS, &item) != 0)
    return false;
  if ((item.stx_attributes_mask & STATX_ATTR_MOUNT_ROOT) != 0)
    return (item.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
  // Before Linux 5.8 only another device shows it.
  struct statx parent {};
  const std::string around = std::string(name) + "/..";
  return S_ISDIR(item.stx_mode) && (::statx(folder, around.c_str(), 0, STATX_BASIC_STATS, &parent) != 0 ||
                                    ::makedev(item.stx_dev_major, item.stx_dev_minor) !=
                                        ::makedev(parent.stx_dev_major, parent.stx_dev_minor));
}

// SPDX-License-Identifier: MIT
#include "platform/posix/MountPoint.h"

#include <fcntl.h>
#include <linux/stat.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>

#include <string>

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

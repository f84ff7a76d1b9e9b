// SPDX-License-Identifier: MIT
#include "platform/posix/SystemFacts.h"

#include <linux/magic.h>
#include <sys/prctl.h>
#include <sys/statfs.h>
#include <sys/syscall.h>
#include <sys/sysinfo.h>
#include <unistd.h>

#include <algorithm>
#include <charconv>
#include <filesystem>
#include <string_view>

#include "base/LinkText.h"
#include "platform/FolderItem.h"
#include "platform/LiesIn.h"
#include "platform/posix/Settings.h"

namespace {

/// The bytes of all memory blocks that are online: /sys/devices/system/memory.
std::uint64_t OnlineMemory() {
  const std::string root = "/sys/devices/system/memory/";
  const std::string size = FileText(root + "block_size_bytes");
  std::uint64_t block = 0;
  std::from_chars(size.data(), size.data() + size.size(), block, 16);
  std::uint64_t online = 0;
  std::error_code error;
  for (const auto& entry : std::filesystem::directory_iterator(root, error))
    if (entry.path().filename().string().starts_with("memory") &&
        FileText(entry.path().string() + "/state").starts_with("online"))
      ++online;
  return online * block;
}

}  // namespace

std::string OwnExecutable() {
  return LinkText("/proc/self/exe");
}

std::uint64_t InstalledBytes() {
  struct sysinfo info {};
  if (::sysinfo(&info) != 0) return 0;
  // What the kernel keeps for itself is installed as well.
  return std::max(std::uint64_t{info.totalram} * info.mem_unit, OnlineMemory());
}

bool ParseSystemVersion(const std::string& release, long long& major, long long& minor) {
  const std::string version = Setting(release, "VERSION_ID");
  const char* end = version.data() + version.size();
  const auto first = std::from_chars(version.data(), end, major);
  if (first.ec != std::errc()) return false;
  minor = 0;
  if (first.ptr != end && *first.ptr == '.') std::from_chars(first.ptr + 1, end, minor);
  return true;
}

bool ReadSystemVersion(long long& major, long long& minor) {
  const std::string own = FileText("/etc/os-release");
  return ParseSystemVersion(own.empty() ? FileText("/usr/lib/os-release") : own, major, minor);
}

bool ProcessRunsBelow(const std::string& place) {
  for (const FolderItem& process : FolderItem("/proc").Children())
    if (LiesIn(LinkText(process.Child("exe").NativePath()), place)) return true;
  return false;
}

bool ProcessHasOpenBelow(const std::string& place) {
  for (const FolderItem& process : FolderItem("/proc").Children())
    for (const FolderItem& file : process.Child("fd").Children())
      if (LiesIn(LinkText(file.NativePath()), place)) return true;
  return false;
}

int OpenEndOf(int process) {
  return static_cast<int>(::syscall(SYS_pidfd_open, process, 0));
}

bool LiesOnDisc(const std::string& path) {
  constexpr decltype(statfs::f_type) kUdf = 0x15013346;
  struct statfs info {};
  return ::statfs(path.c_str(), &info) == 0 && (info.f_type == ISOFS_SUPER_MAGIC || info.f_type == kUdf);
}

void HideMemoryFromDumps() {
  static_cast<void>(::prctl(PR_SET_DUMPABLE, 0));
}

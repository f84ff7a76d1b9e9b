// SPDX-License-Identifier: MIT
// The wall, by Landlock and a filter of system calls.
#include "archive/Wall.h"

#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/landlock.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace archive {
namespace {

/// The rule set of the newest kernels; older ones take as much of it as they know.
struct RuleSet {
  std::uint64_t files = 0;
  std::uint64_t network = 0;
  std::uint64_t scopes = 0;
};

constexpr std::uint64_t kTruncate = 1 << 14, kDeviceCalls = 1 << 15;
constexpr std::uint64_t kAllNetwork = 3;  // bind and connect
constexpr std::uint64_t kAllScopes = 3;   // abstract sockets and signals

constexpr std::uint64_t kBelowFolder = LANDLOCK_ACCESS_FS_WRITE_FILE | LANDLOCK_ACCESS_FS_READ_DIR |
                                       LANDLOCK_ACCESS_FS_REMOVE_DIR | LANDLOCK_ACCESS_FS_REMOVE_FILE |
                                       LANDLOCK_ACCESS_FS_MAKE_DIR | LANDLOCK_ACCESS_FS_MAKE_REG |
                                       LANDLOCK_ACCESS_FS_MAKE_SYM | LANDLOCK_ACCESS_FS_REFER;

#if defined(__x86_64__)
constexpr std::uint32_t kMachine = AUDIT_ARCH_X86_64;
#elif defined(__aarch64__)
constexpr std::uint32_t kMachine = AUDIT_ARCH_AARCH64;
#else
constexpr std::uint32_t kMachine = 0;
#endif

}  // namespace

void RestrictCalls() {
  if (prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) != 0 || kMachine == 0) return;
  constexpr std::uint32_t kForbidden[] = {
      SYS_socket,
      SYS_socketpair,
      SYS_connect,
      SYS_bind,
      SYS_listen,
      SYS_accept,
      SYS_accept4,
      SYS_execve,
      SYS_execveat,
      SYS_mount,
      SYS_umount2,
      SYS_move_mount,
      SYS_open_tree,
      SYS_fsopen,
      SYS_pivot_root,
      SYS_chroot,
      SYS_ptrace,
      SYS_process_vm_readv,
      SYS_process_vm_writev,
      SYS_pidfd_open,
      SYS_pidfd_getfd,
      SYS_io_uring_setup,
      SYS_bpf,
      SYS_unshare,
      SYS_setns,
      SYS_keyctl,
      SYS_add_key,
      SYS_request_key,
      SYS_fchown,
      SYS_fchownat,
      SYS_setxattr,
      SYS_lsetxattr,
      SYS_fsetxattr,
      SYS_userfaultfd,
      SYS_perf_event_open,
  };
  const auto statement = [](unsigned code, std::uint32_t k) {
    return sock_filter{static_cast<std::uint16_t>(code), 0, 0, k};
  };
  const auto unless = [](std::uint32_t k, std::uint8_t equal, std::uint8_t other) {
    return sock_filter{BPF_JMP | BPF_JEQ | BPF_K, equal, other, k};
  };
  std::vector<sock_filter> filter = {
      statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, arch)),
      unless(kMachine, 1, 0),
      statement(BPF_RET | BPF_K, SECCOMP_RET_KILL_PROCESS),  // calls of another machine's numbering
      statement(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
  };
#if defined(__x86_64__)
  constexpr std::uint32_t kOtherNumbering = 0x40000000;  // the same calls, counted from there
  filter.push_back({BPF_JMP | BPF_JGE | BPF_K, 0, 1, kOtherNumbering});
  filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM));
#endif
  for (const std::uint32_t call : kForbidden) {
    filter.push_back(unless(call, 0, 1));
    filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM));
  }
  filter.push_back(statement(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
  const sock_fprog program{static_cast<std::uint16_t>(filter.size()), filter.data()};
  static_cast<void>(prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program, 0, 0));
}

FolderWall::FolderWall(int folder, int above) {
  const long version = syscall(SYS_landlock_create_ruleset, nullptr, 0, LANDLOCK_CREATE_RULESET_VERSION);
  // The first version forbids to rename from folder to folder.
  if (version < 2) return;
  RuleSet rules;
  rules.files = LANDLOCK_ACCESS_FS_REFER * 2 - 1;
  std::size_t known = sizeof rules.files;
  if (version >= 3) rules.files |= kTruncate;
  if (version >= 5) rules.files |= kDeviceCalls;
  if (version >= 4) {
    rules.network = kAllNetwork;
    known += sizeof rules.network;
  }
  if (version >= 6) {
    rules.scopes = kAllScopes;
    known += sizeof rules.scopes;
  }
  Descriptor made(static_cast<int>(syscall(SYS_landlock_create_ruleset, &rules, known, 0)));
  const auto allow = [&](int below, std::uint64_t rights) {
    landlock_path_beneath_attr rule{};
    rule.allowed_access = rights;
    rule.parent_fd = below;
    return below < 0 || syscall(SYS_landlock_add_rule, made.Get(), LANDLOCK_RULE_PATH_BENEATH, &rule, 0) == 0;
  };
  // Truncating is asked for with each file that is opened; without the right, the way to it is looked at up
  // to the root of the whole tree, with every file.
  const std::uint64_t truncate = version >= 3 ? kTruncate : 0;
  if (made && allow(folder, kBelowFolder | truncate) && allow(above, LANDLOCK_ACCESS_FS_REMOVE_DIR))
    fRules = std::move(made);
}

void FolderWall::Enter() const {
  if (fRules) static_cast<void>(syscall(SYS_landlock_restrict_self, fRules.Get(), 0));
}

}  // namespace archive

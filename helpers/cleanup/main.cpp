// SPDX-License-Identifier: MIT
// Removes an installer, or the folder that it came in, once it has ended. It is started by the
// installer without arguments and finds its order beside its own bundle.
#include <fcntl.h>
#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <fstream>
#include <string>
#include <thread>

#include "base/LinkText.h"
#include "base/StandardStreams.h"
#include "base/TreeDelete.h"
#include "cleanup/Order.h"
#include "platform/Brake.h"
#include "platform/LiesIn.h"
#include "platform/posix/TreeLook.h"

namespace {

constexpr auto kLook = std::chrono::milliseconds(100);
constexpr int kMostLooks = 10 * 60 * 10;  // ten minutes

/// The installer quits at once after it has started this program, whose parent is another one then. It may
/// have gone before this program's first step: so the parent is known by its file, which is to be removed.
bool InstallerHasEnded(const std::string& path) {
  for (int look = 0; look < kMostLooks; ++look) {
    if (!LiesIn(LinkText("/proc/" + std::to_string(::getppid()) + "/exe"), path)) return true;
    std::this_thread::sleep_for(kLook);
  }
  return false;
}

/// The path of this program's bundle, "….app", or empty.
std::string OwnBundle() {
  const std::string path = LinkText("/proc/self/exe");
  const std::size_t end = path.rfind("/Contents/MacOS/");
  return end == std::string::npos ? "" : path.substr(0, end);
}

/// Why the item stays; empty when it may go. Known before anything of it is touched.
std::string Objection(const std::string& path) {
  KeptFolders kept;
  kept.AddEverybodys();
  const std::string reason = ReasonToStay(path, kept);
  if (!reason.empty()) return reason;
  if (::faccessat(AT_FDCWD, path.substr(0, path.rfind('/') + 1).c_str(), W_OK | X_OK, AT_EACCESS) != 0)
    return "its folder can't be changed";
  return LookAtTree(path, [] {}).deletable ? "" : "something in it can't be removed";
}

std::string TakeOrder(const std::string& file) {
  std::string order;
  std::ifstream stream(file);
  std::getline(stream, order, '\0');
  ::unlink(file.c_str());
  return order;
}

}  // namespace

int main() {
  OpenStandardStreams();
  const std::string bundle = OwnBundle();
  if (bundle.empty()) return 1;
  const std::string path = PathOfOrder(TakeOrder(bundle.substr(0, bundle.rfind('.')) + ".data"));
  if (!path.empty() && !InstallerHasEnded(path)) return 1;
  const std::string objection = path.empty() ? "the order is unclear" : Objection(path);
  if (!objection.empty()) {
    std::fprintf(stderr, "cleanup: \"%s\" stays: %s\n", path.c_str(), objection.c_str());
    return 1;
  }
  return DeleteTreeAt(path, [] {}) ? 0 : 1;
}

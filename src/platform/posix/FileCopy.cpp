// SPDX-License-Identifier: MIT
// Data goes from file to file inside the kernel, in pieces, so that windows can repaint between them.
#include "platform/posix/FileCopy.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <cerrno>
#include <vector>

#include "base/Descriptor.h"
#include "base/LinkText.h"
#include "base/SystemFiles.h"
#include "base/WriteAll.h"

namespace {

constexpr std::size_t kPiece = 4U << 20;
constexpr mode_t kPermissions = S_IRWXU | S_IRWXG | S_IRWXO;

bool CopyThroughBuffer(int source, int target, const std::function<bool()>& goOn) {
  std::vector<char> buffer(256U << 10);
  while (true) {
    const ssize_t got = ::read(source, buffer.data(), buffer.size());
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) return got == 0;
    if (!WriteAll(target, buffer.data(), static_cast<std::size_t>(got)) || !goOn()) return false;
  }
}

enum class Outcome { Copied, Failed, NoLink };

/// Dresses the file and gives it the name, if it has none yet. A copy of the whole length may count in spite
/// of an error; see FolderItem::CopyFileTo.
Outcome Finish(Descriptor file, const struct stat& info, bool copied, const std::string* name) {
  const timespec times[2] = {info.st_atim, info.st_mtim};
  // Some file systems keep neither modes nor times; the data is what counts.
  static_cast<void>(::fchmod(file.Get(), info.st_mode & kPermissions));
  static_cast<void>(::futimens(file.Get(), times));
  struct stat written {};
  const bool whole = copied || (::fstat(file.Get(), &written) == 0 && written.st_size == info.st_size);
  if (name != nullptr && whole) {
    if (!GiveName(file.Get(), *name)) return errno == EEXIST ? Outcome::Failed : Outcome::NoLink;
  }
  return ::close(file.Release()) == 0 && copied ? Outcome::Copied : Outcome::Failed;
}

bool CopyRegularFile(int source, const struct stat& info, const std::string& target,
                     const std::function<void()>& tick) {
  const auto goOn = [&tick] {
    tick();
    return true;
  };
  // It gets its name once it is whole, where the file system has such files: a killed process leaves nothing.
  const std::string folder = target.substr(0, target.rfind('/') + 1);
  Descriptor unnamed = OpenUnnamed(folder);
  if (unnamed) {
    const bool copied = CopyBytes(source, unnamed.Get(), goOn);
    const Outcome outcome = Finish(std::move(unnamed), info, copied, &target);
    if (outcome != Outcome::NoLink || ::lseek(source, 0, SEEK_SET) != 0) return outcome == Outcome::Copied;
  }
  const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  Descriptor file(::open(target.c_str(), flags, S_IRUSR | S_IWUSR));
  if (!file) return false;
  const bool copied = CopyBytes(source, file.Get(), goOn);
  return Finish(std::move(file), info, copied, nullptr) == Outcome::Copied;
}

bool CopyLink(const std::string& source, const struct stat& info, const std::string& target) {
  const std::string text = LinkText(source);
  if (text.empty() || ::symlink(text.c_str(), target.c_str()) != 0) return false;
  const timespec times[2] = {info.st_atim, info.st_mtim};
  // Some file systems keep no times for links; the link itself is what counts.
  static_cast<void>(::utimensat(AT_FDCWD, target.c_str(), times, AT_SYMLINK_NOFOLLOW));
  return true;
}

}  // namespace

bool CopyBytes(int source, int target, const std::function<bool()>& goOn) {
  while (true) {
    const ssize_t done = CopyRange(source, target, kPiece);
    if (done < 0 && errno == EINTR) continue;
    // Some pairs of file systems can't, and some virtual files answer with nothing: the plain way
    // goes on from where both files stand.
    const bool cannot = done < 0 && (errno == EXDEV || errno == EINVAL || errno == ENOSYS ||
                                     errno == EOPNOTSUPP || errno == EBADF);
    if (cannot || done == 0) return CopyThroughBuffer(source, target, goOn);
    if (done < 0 || !goOn()) return false;
  }
}

bool CopySingleItem(const std::string& source, const std::string& target, bool keepLink,
                    const std::function<void()>& tick) {
  struct stat info {};
  if (::fstatat(AT_FDCWD, source.c_str(), &info, keepLink ? AT_SYMLINK_NOFOLLOW : 0) != 0) return false;
  if (S_ISLNK(info.st_mode)) return CopyLink(source, info, target);
  if (S_ISDIR(info.st_mode)) return ::mkdir(target.c_str(), S_IRWXU) == 0;
  if (!S_ISREG(info.st_mode)) return false;  // opening a FIFO would wait for its other end
  const Descriptor file(
      ::open(source.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC | (keepLink ? O_NOFOLLOW : 0)));
  if (!file || ::fstat(file.Get(), &info) != 0 || !S_ISREG(info.st_mode)) return false;
  return CopyRegularFile(file.Get(), info, target, tick);
}

void CopyAttributes(const std::string& source, const std::string& target) {
  struct stat info {};
  if (::stat(source.c_str(), &info) != 0) return;
  const Descriptor item(::open(target.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC));
  if (!item) return;
  const timespec times[2] = {info.st_atim, info.st_mtim};
  // A copy that keeps its contents but not its dress is still a copy.
  static_cast<void>(::fchmod(item.Get(), info.st_mode & kPermissions));
  static_cast<void>(::futimens(item.Get(), times));
}

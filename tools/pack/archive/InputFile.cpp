// SPDX-License-Identifier: MIT
// Reading by open, pread and fstat.
#include "pack/archive/InputFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "pack/Interrupt.h"
#include "pack/Refusal.h"

namespace pack {

InputFile::InputFile(const TreeItem& item) : fItem(item) {
  fFile = ::open(item.path.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC);
  if (fFile < 0) throw Refusal(item.path, "can't be read: " + std::generic_category().message(errno));
}

InputFile::~InputFile() {
  ::close(fFile);  // nothing was written
}

void InputFile::Read(char* to, std::size_t size) {
  if (ReadAt(to, size, fPlace) != size) RefuseChange();
  fPlace += size;
}

std::string InputFile::Sample(std::uint64_t place, std::size_t size) const {
  std::string bytes(size, '\0');
  bytes.resize(ReadAt(bytes.data(), size, place));
  return bytes;
}

void InputFile::Finish() const {
  struct stat now {};
  const bool same = ::fstat(fFile, &now) == 0 && S_ISREG(now.st_mode) && fPlace == fItem.size &&
                    static_cast<std::uint64_t>(now.st_size) == fItem.size &&
                    now.st_mtim.tv_sec == fItem.modified.tv_sec &&
                    now.st_mtim.tv_nsec == fItem.modified.tv_nsec;
  if (!same) RefuseChange();
}

void InputFile::RefuseChange() const {
  throw Refusal(fItem.path, "changed while it was packed");
}

std::size_t InputFile::ReadAt(char* to, std::size_t size, std::uint64_t place) const {
  CheckInterrupted();
  std::size_t done = 0;
  while (done < size) {
    const ssize_t got = ::pread(fFile, to + done, size - done, static_cast<off_t>(place + done));
    if (got < 0 && errno == EINTR) continue;
    if (got < 0) throw Refusal(fItem.path, "can't be read: " + std::generic_category().message(errno));
    if (got == 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

}  // namespace pack

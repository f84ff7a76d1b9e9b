// SPDX-License-Identifier: MIT
// Writing by pwrite, so that a header can be put right later.
#include "pack/archive/OutputFile.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "pack/Refusal.h"

namespace pack {

OutputFile::OutputFile(const std::filesystem::path& file) : fName(file) {
  fFile = ::open(file.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
  if (fFile < 0) Refuse();
}

OutputFile::~OutputFile() {
  if (fFile >= 0) ::close(fFile);  // the archive is given up
}

void OutputFile::Append(std::string_view bytes) {
  WriteAt(fSize, bytes);
  fSize += bytes.size();
}

void OutputFile::Overwrite(std::uint64_t place, std::string_view bytes) {
  WriteAt(place, bytes);
}

void OutputFile::Shorten(std::uint64_t size) {
  if (::ftruncate(fFile, static_cast<off_t>(size)) != 0) Refuse();
  fSize = size;
}

void OutputFile::Close() {
  const int file = fFile;
  fFile = -1;
  if (::close(file) != 0) Refuse();
}

void OutputFile::WriteAt(std::uint64_t place, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t done = ::pwrite(fFile, bytes.data(), bytes.size(), static_cast<off_t>(place));
    if (done < 0 && errno == EINTR) continue;
    if (done < 0) Refuse();
    bytes.remove_prefix(static_cast<std::size_t>(done));
    place += static_cast<std::uint64_t>(done);
  }
}

void OutputFile::Refuse() const {
  throw Refusal(fName.string(), "can't be written: " + std::generic_category().message(errno));
}

}  // namespace pack

// SPDX-License-Identifier: MIT
// Streams over read(2) and write(2).
#include "platform/BinaryStream.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

#include "base/WriteAll.h"
#include "platform/UnnamedFile.h"
#include "platform/posix/FileCopy.h"

std::optional<BinaryStream> BinaryStream::Open(const FolderItem& item) {
  const int descriptor = ::open(item.NativePath().c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
  if (descriptor < 0) return std::nullopt;
  BinaryStream stream(descriptor);
  struct stat info {};
  if (::fstat(descriptor, &info) != 0 || !S_ISREG(info.st_mode)) return std::nullopt;
  return stream;
}

std::optional<BinaryStream> BinaryStream::Create(const FolderItem& item) {
  if (UnnamedFile::IsOne(item)) {
    const int unnamed = ::open(item.NativePath().c_str(), O_WRONLY | O_TRUNC | O_CLOEXEC);
    return unnamed < 0 ? std::nullopt : std::optional(BinaryStream(unnamed));
  }
  // Never opens what is there: a planted link or FIFO would be written through.
  if (::unlink(item.NativePath().c_str()) != 0 && errno != ENOENT) return std::nullopt;
  const int flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
  const int descriptor = ::open(item.NativePath().c_str(), flags, 0666);
  if (descriptor < 0) return std::nullopt;
  return BinaryStream(descriptor);
}

BinaryStream::BinaryStream(BinaryStream&& other) noexcept
    : fDescriptor(std::exchange(other.fDescriptor, -1)) {}

BinaryStream::~BinaryStream() {
  Close();
}

std::uint64_t BinaryStream::Length() const {
  struct stat info {};
  return ::fstat(fDescriptor, &info) == 0 ? static_cast<std::uint64_t>(info.st_size) : 0;
}

std::size_t BinaryStream::Read(char* buffer, std::size_t count) {
  std::size_t done = 0;
  while (done < count) {
    const ssize_t got = ::read(fDescriptor, buffer + done, count - done);
    if (got < 0 && errno == EINTR) continue;
    if (got <= 0) break;
    done += static_cast<std::size_t>(got);
  }
  return done;
}

std::string BinaryStream::ReadAll() {
  std::string bytes(Length(), '\0');
  bytes.resize(Read(bytes.data(), bytes.size()));
  return bytes;
}

std::optional<std::string> BinaryStream::Content(const FolderItem& item, std::uint64_t most) {
  std::optional<BinaryStream> file = Open(item);
  const std::uint64_t length = file ? file->Length() : 0;
  if (!file || length > most) return std::nullopt;
  std::string bytes = file->ReadAll();
  return bytes.size() == length ? std::optional(std::move(bytes)) : std::nullopt;
}

bool BinaryStream::Write(const char* bytes, std::size_t count) {
  return WriteAll(fDescriptor, bytes, count);
}

bool BinaryStream::WriteAllOf(BinaryStream& source, const std::function<bool()>& goOn) {
  const std::uint64_t expected = source.Length();
  if (!CopyBytes(source.fDescriptor, fDescriptor, goOn)) return false;
  // A medium that gives up can end a file early without an error.
  const off_t end = ::lseek(source.fDescriptor, 0, SEEK_CUR);
  return end >= 0 && static_cast<std::uint64_t>(end) >= expected;
}

bool BinaryStream::Close() {
  return fDescriptor < 0 || ::close(std::exchange(fDescriptor, -1)) == 0;
}

// SPDX-License-Identifier: MIT
// Creates files below the folders' descriptors and fills them.
#include "archive/writing/Worker.h"

#include <algorithm>
#include <cerrno>
#include <new>
#include <optional>
#include <system_error>

#include "archive/planning/Room.h"
#include "base/Descriptor.h"
#include "base/WriteAll.h"

namespace archive {
namespace {

/// Checks and writes the pieces of one large file.
class FileTaker : public Taker {
 public:
  FileTaker(Work& work, const Entry& entry, int file) : fWork(work), fEntry(entry), fFile(file) {}

  Status Take(Bytes piece) override {
    fCrc = Crc32(fCrc, piece);
    if (!fWork.OnlyChecks() && !WriteAll(fFile, piece.data(), piece.size()))
      return FailedCall("write", fEntry.name);
    fWork.written.fetch_add(piece.size(), std::memory_order_relaxed);
    return {};
  }

  bool Verified() const { return fCrc == fEntry.crc; }

 private:
  Work& fWork;
  const Entry& fEntry;
  const int fFile;
  std::uint32_t fCrc = 0;
};

}  // namespace

void Work::Fail(Status status) {
  const std::lock_guard lock(fMutex);
  if (fFailure.Ok()) fFailure = std::move(status);
  stop = true;
}

Status Work::Failure() {
  const std::lock_guard lock(fMutex);
  return fFailure;
}

Worker::Worker(Work& work, unsigned number)
    : fWork(work),
      fNumber(number),
      fFiles(work.plan, work.root, work.descriptors, work.made),
      fInflater(work.stop) {}

void Worker::Run() try {
  while (!fWork.stop) {
    const Job* job = fWork.jobs.Next(fNumber);
    if (job == nullptr) return;
    Status status = Do(*job);
    if (!status.Ok()) fWork.Fail(std::move(status));
  }
} catch (const std::bad_alloc&) {
  fWork.Fail(archive::Fail("there is not enough memory"));
} catch (const std::system_error&) {
  fWork.Fail(archive::Fail("could not start a thread"));
}

Status Worker::Do(const Job& job) {
  if (job.way == Job::Way::Whole) return WriteWhole(job);
  return WriteStream(fWork.plan.files[job.first], job.way == Job::Way::Shared);
}

Status Worker::WriteWhole(const Job& run) {
  const std::size_t room = fWork.jobs.Room();
  if (!fRoom) fRoom = std::make_unique_for_overwrite<unsigned char[]>(room);
  const Plan& plan = fWork.plan;
  const Entry& first = plan.EntryOf(plan.files[run.first]);
  const Entry& last = plan.EntryOf(plan.files[run.first + run.count - 1]);
  const std::size_t length = last.data + last.compressed - first.data;
  unsigned char* const packed = fRoom.get() + room - length;
  if (!fWork.source.ReadAt(first.data, packed, length)) return FailedRead(run, packed);
  for (std::size_t i = 0; i < run.count && !fWork.stop; ++i) {
    const NodeId node = plan.files[run.first + i];
    const Entry& entry = plan.EntryOf(node);
    Status status = WriteFile(node, {packed + (entry.data - first.data), entry.compressed});
    if (!status.Ok()) return status;
  }
  return {};
}

/// Reads one after the other, to name the one.
Status Worker::FailedRead(const Job& run, unsigned char* packed) {
  const int why = errno;
  for (std::size_t i = 0; i < run.count; ++i) {
    const Entry& entry = fWork.plan.EntryOf(fWork.plan.files[run.first + i]);
    if (!fWork.source.ReadAt(entry.data, packed, entry.compressed))
      return FailedCall("read the data of the entry", entry.name);
  }
  errno = why;
  return FailedCall("read the archive");  // between the entries, or it can be read now
}

Status Worker::WriteFile(NodeId node, Bytes packed) {
  const Entry& entry = fWork.plan.EntryOf(node);
  Result<Bytes> content = fInflater.Whole(packed, entry, {fRoom.get(), entry.size});
  if (!content.Ok()) return content.Failure();
  if (fWork.OnlyChecks()) {
    fWork.written.fetch_add(content->size(), std::memory_order_relaxed);
    return {};
  }
  Result<Descriptor> file = fFiles.Create(node);
  if (!file.Ok()) return file.Failure();
  if (!WriteAll(file->Get(), content->data(), content->size())) return FailedCall("write", entry.name);
  Status status = FileMaker::Complete(std::move(*file), entry);
  if (status.Ok()) fWork.written.fetch_add(content->size(), std::memory_order_relaxed);
  return status;
}

Status Worker::AdmitBeyond(std::uint64_t bytes) {
  if (fWork.OnlyChecks()) return {};
  const std::uint64_t all = fWork.plan.bytes + (fWork.beyond += bytes);
  return CheckRoom(fWork.root, all - std::min<std::uint64_t>(fWork.written, all), 0);
}

Status Worker::WriteStream(NodeId node, bool shared) {
  const Entry& entry = fWork.plan.EntryOf(node);
  Result<Descriptor> file = fWork.OnlyChecks() ? Result<Descriptor>(Descriptor()) : fFiles.Create(node);
  if (!file.Ok()) return file.Failure();
  FileTaker taker(fWork, entry, file->Get());
  Status status;
  const auto admit = [this](std::uint64_t bytes) { return AdmitBeyond(bytes); };
  std::optional<PipedOutlet> piped;
  if (shared) {
    try {
      piped.emplace(taker);
    } catch (const std::system_error&) {
      // one thread does both
    }
  }
  if (piped) {
    status = fInflater.Stream(fWork.source, entry, *piped, admit);
    Status closed = piped->Close();
    if (status.Ok()) status = closed;
  } else {
    DirectOutlet outlet(fPiece, taker);
    status = fInflater.Stream(fWork.source, entry, outlet, admit);
  }
  if (!status.Ok()) return status;
  if (!taker.Verified()) return WrongChecksum(entry);
  return fWork.OnlyChecks() ? Status() : FileMaker::Complete(std::move(*file), entry);
}

}  // namespace archive

// SPDX-License-Identifier: MIT
// Plans and inflates in memory. Most inputs are mended, so that they come as far as that.
#include <libdeflate.h>

#include <algorithm>
#include <array>

#include "archive/reading/FrameSource.h"
#include "archive/reading/Inflate.h"
#include "archive/writing/FrameWorker.h"
#include "fuzz/Bytes.h"
#include "fuzz/Mutator.h"
#include "fuzz/PlanRules.h"
#include "support/SolidBuilder.h"

namespace {

constexpr std::uint64_t kMostWork = 1 << 20;  // bytes that one input may make

/// Takes a stream in small pieces and counts.
class Counter : public archive::Outlet {
 public:
  explicit Counter(const archive::Entry& entry) : fEntry(entry) {}
  std::span<unsigned char> Buffer() override { return fPiece; }
  archive::Status Put(std::size_t length) override {
    if (length > fPiece.size() || length > fEntry.size - fMade)
      fuzz::Broken("a stream makes no more than its entry states", fEntry.name);
    fMade += length;
    fCrc = libdeflate_crc32(fCrc, fPiece.data(), length);
    return fMade > kMostWork ? archive::Fail("enough") : archive::Status();
  }
  archive::Status Close() override { return {}; }

  std::uint64_t Made() const { return fMade; }
  std::uint32_t Crc() const { return fCrc; }

 private:
  const archive::Entry& fEntry;
  std::array<unsigned char, 5000> fPiece;
  std::uint64_t fMade = 0;
  std::uint32_t fCrc = 0;
};

bool IsDamaged(const archive::Status& failure) {
  return failure.Sentence().ends_with(" is damaged");
}

/// The two ways to inflate must come to one length and one content. Each of their libraries takes some
/// streams with faulty codes that the other calls damaged; both leave the verdict to length and checksum.
/// Returns the bytes made.
std::uint64_t CheckContent(const archive::Source& source, const archive::Entry& entry) {
  static const std::atomic<bool> never{false};
  static archive::Inflater inflater(never);
  Counter counter(entry);
  const auto admit = [](std::uint64_t) { return archive::Status(); };
  const archive::Status streamed = inflater.Stream(source, entry, counter, admit);
  if (streamed.Ok() && counter.Made() != entry.size)
    fuzz::Broken("a stream makes what its entry states", entry.name);
  if (!streamed.Ok()) fuzz::CheckSentence(streamed);
  if (entry.size > kMostWork || entry.compressed > kMostWork) return counter.Made();

  std::string packed(entry.compressed, '\0'), room(entry.size, '\0');
  if (!source.ReadAt(entry.data, packed.data(), packed.size())) fuzz::Broken("data can be read", entry.name);
  auto whole = inflater.Whole({reinterpret_cast<unsigned char*>(packed.data()), packed.size()}, entry,
                              {reinterpret_cast<unsigned char*>(room.data()), room.size()});
  if (!whole.Ok()) fuzz::CheckSentence(whole.Failure());
  const bool verified = streamed.Ok() && counter.Crc() == entry.crc;
  if (verified ? !whole.Ok() && !IsDamaged(whole.Failure()) : whole.Ok() && !IsDamaged(streamed))
    fuzz::Broken("both ways come to one verdict", entry.name);
  if (!whole.Ok()) return counter.Made();
  if (whole->size() != entry.size || libdeflate_crc32(0, whole->data(), whole->size()) != entry.crc)
    fuzz::Broken("content is what its entry states", entry.name);
  return counter.Made() + whole->size();
}

/// The crew takes an archive's frames only if each file, read at its place, has the checksum that it states.
bool CheckFrames(const archive::Plan& plan, const archive::Source& source) {
  if (plan.solid.frames.back().End() > kMostWork) return false;
  archive::Work work(plan, source, archive::Work::kNowhere, 1);
  archive::FrameDecoder decoder(source, archive::LargestOf(plan.solid.frames));
  archive::FrameWorker(work, decoder).Run();
  const archive::Status told = work.Failure();
  if (!told.Ok()) {
    fuzz::CheckSentence(told);
    return false;
  }
  const archive::FrameSource content(source, plan.solid.frames);
  for (const archive::NodeId file : plan.files) {
    const archive::Entry& entry = plan.EntryOf(file);
    std::string bytes(entry.size, '\0');
    if (!content.ReadAt(entry.data, bytes.data(), bytes.size()) ||
        libdeflate_crc32(0, bytes.data(), bytes.size()) != entry.crc)
      fuzz::Broken("what the crew takes is what the entry states", entry.name);
  }
  return true;
}

/// Whether the archive is taken.
bool Check(const archive::Source& source) {
  auto plan = archive::ReadPlan(source, 1);
  if (!plan.Ok()) return false;
  if (plan->solid.Is()) {
    fuzz::CheckPlan(*plan, archive::FrameSource(source, plan->solid.frames));
    return CheckFrames(*plan, source);
  }
  fuzz::CheckPlan(*plan, source);
  std::uint64_t made = 0;
  for (const archive::NodeId file : plan->files)
    if (made < kMostWork) made += CheckContent(source, plan->EntryOf(file));
  return true;
}

}  // namespace

/// As it is, and packed as a whole. What is taken so is taken as it is.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string bytes(reinterpret_cast<const char*>(data), size);
  const bool taken = Check(fuzz::Bytes(bytes));
  const bool takenWhole = Check(archive::MemorySource(ziptest::Solid(bytes, size / 3 + 1)));
  if (takenWhole && !taken) fuzz::Broken("the crew compares each local header");
  return 0;
}

extern "C" std::size_t LLVMFuzzerMutate(std::uint8_t* data, std::size_t size, std::size_t room);

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size, std::size_t room,
                                               unsigned seed) {
  const unsigned way = seed % 8;
  const bool twists = way < 3;
  if (!twists) size = LLVMFuzzerMutate(data, size, room);
  std::string bytes(reinterpret_cast<char*>(data), size);
  if (twists) fuzz::Twist(bytes, seed);
  if (way != 7) fuzz::Mend(bytes);
  if (way == 6) fuzz::Lie(bytes, seed);
  if (bytes.size() > room) return size;
  std::copy(bytes.begin(), bytes.end(), data);
  return bytes.size();
}

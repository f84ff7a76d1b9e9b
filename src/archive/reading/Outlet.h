// SPDX-License-Identifier: MIT
// Where a stream's content goes: to a taker directly, or to one that works on a thread of its own.
#pragma once

#include <array>
#include <condition_variable>
#include <cstdint>
#include <memory>
#include <mutex>
#include <span>
#include <thread>

#include "archive/Result.h"

namespace archive {

/// A piece is large enough to make calls cheap and small enough to stay in a core's own cache.
constexpr std::size_t kPiece = 256 << 10;

/// Takes an entry's content piece by piece.
class Taker {
 public:
  virtual ~Taker() = default;
  virtual Status Take(std::span<const unsigned char> piece) = 0;
};

class Outlet {
 public:
  virtual ~Outlet() = default;
  /// Where the next piece is to be put.
  virtual std::span<unsigned char> Buffer() = 0;
  /// Sends the first `length` bytes of that buffer on.
  virtual Status Put(std::size_t length) = 0;
  /// Waits until all that was put is taken; the first failure of the taker, if any.
  virtual Status Close() = 0;
};

class DirectOutlet : public Outlet {
 public:
  DirectOutlet(std::unique_ptr<unsigned char[]>& buffer, Taker& taker);
  std::span<unsigned char> Buffer() override { return {fBuffer, kPiece}; }
  Status Put(std::size_t length) override { return fTaker.Take({fBuffer, length}); }
  Status Close() override { return {}; }

 private:
  unsigned char* fBuffer;
  Taker& fTaker;
};

/// The taker runs beside the thread that fills the buffers: inflating and writing overlap.
class PipedOutlet : public Outlet {
 public:
  explicit PipedOutlet(Taker& taker);
  ~PipedOutlet() override;
  std::span<unsigned char> Buffer() override;
  Status Put(std::size_t length) override;
  Status Close() override;

 private:
  static constexpr std::size_t kBuffers = 4;
  void Run();

  Taker& fTaker;
  std::unique_ptr<unsigned char[]> fBytes;
  std::array<std::size_t, kBuffers> fLengths{};
  std::mutex fMutex;
  std::condition_variable fChanged;
  std::uint64_t fPut = 0, fTaken = 0;  // pieces so far
  bool fClosed = false;
  Status fFailure;
  std::thread fThread;
};

}  // namespace archive

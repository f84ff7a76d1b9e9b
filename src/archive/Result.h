// SPDX-License-Identifier: MIT
// How the archive's operations report: a sentence for the user, or a value.
#pragma once

#include <atomic>
#include <string>
#include <string_view>
#include <utility>
#include <variant>

namespace archive {

/// Success, or one sentence that says what failed and on which entry.
class [[nodiscard]] Status {
 public:
  Status() = default;
  static Status Failed(std::string sentence) {
    Status status;
    status.fSentence = std::move(sentence);
    return status;
  }
  bool Ok() const { return fSentence.empty(); }
  const std::string& Sentence() const { return fSentence; }

 private:
  std::string fSentence;
};

template <class T>
class [[nodiscard]] Result {
 public:
  Result(T value) : fHeld(std::move(value)) {}
  Result(Status failure) : fHeld(std::move(failure)) {}
  bool Ok() const { return fHeld.index() == 0; }
  T& operator*() { return std::get<0>(fHeld); }
  T* operator->() { return &std::get<0>(fHeld); }
  const Status& Failure() const { return std::get<1>(fHeld); }

 private:
  std::variant<T, Status> fHeld;
};

template <class... Parts>
Status Fail(const Parts&... parts) {
  std::string sentence;
  (sentence.append(std::string_view(parts)), ...);
  return Status::Failed(std::move(sentence));
}

/// `name` in quotes, fit for a terminal: no control characters, no broken UTF-8, not endless.
std::string Quoted(std::string_view name);

/// "could not <what>: <the reason that errno gives>".
Status FailedCall(std::string_view what);
/// The same with an entry: "could not <what> "<name>": <reason>".
Status FailedCall(std::string_view what, std::string_view name);

/// Somebody asked to end: a signal's handler, or a worker that failed.
inline bool Stopped(const std::atomic<bool>* stop) {
  return stop != nullptr && *stop;
}
Status Interrupted();

}  // namespace archive

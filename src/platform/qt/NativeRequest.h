// SPDX-License-Identifier: MIT
// What passes between the program and its network module.
#pragma once

#include <cstdint>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/MemoryBlock.h"

struct RequestParts {
  std::string method;
  std::string address;  // UTF-8
  std::vector<std::pair<std::string, std::string>> headers;
  std::string content;
  std::uint64_t bound = 0;  // bytes of an answer's content; more is a failure
};

struct RequestOutcome {
  std::string failure;  // empty: there is a page, which the other fields tell
  std::string address;
  int status = 0;
  MemoryBlock content;
};
/// Called once, from the main thread's event loop.
using RequestEnd = std::function<void(RequestOutcome)>;

/// A request under way. When it is destroyed it ends, and nobody is told.
class NativeRequest {
 public:
  NativeRequest() = default;
  virtual ~NativeRequest() = default;
  NativeRequest(const NativeRequest&) = delete;
  NativeRequest& operator=(const NativeRequest&) = delete;
};

/// The module's one door: starts a request, which is the caller's. Main thread only.
using StartRequestFunction = NativeRequest*(const RequestParts& parts, RequestEnd end);
inline constexpr char kStartRequest[] = "TessarineStartRequest";

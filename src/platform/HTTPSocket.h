// SPDX-License-Identifier: MIT
// One request over HTTP, which runs beside the program and ends in an event.
#pragma once

#include <memory>
#include <string>

#include "platform/MemoryBlock.h"

class NativeSocket;

/// Made and destroyed on the main thread; an object sends one request, from whatever thread. Its events come
/// from the main thread's event loop. The request ends with the object, and no event comes after that.
class HTTPSocket {
 public:
  HTTPSocket();
  virtual ~HTTPSocket();
  HTTPSocket(const HTTPSocket&) = delete;
  HTTPSocket& operator=(const HTTPSocket&) = delete;

  void SetRequestHeader(const std::string& name, const std::string& value);
  /// The body as it goes out, and its media type.
  void SetRequestContent(const std::string& bytes, const std::string& type);
  /// Returns at once. `method` is "GET" or "POST", `url` a web address ("http", "https") in UTF-8.
  /// Redirects are followed, but none from https to http.
  void Send(const std::string& method, const std::string& url);

  /// An answer has arrived as a whole, whatever its status. `url` is where it came from in the end; the
  /// content is as the server sent it, not decoded. It is no larger than 2 GiB and half the installed memory.
  virtual void PageReceived(const std::string& url, int httpStatus, MemoryBlock content) = 0;
  /// Instead of the other event: there is no answer, or only part of one. `reason` is for logs.
  virtual void Error(const std::string& reason) = 0;

 private:
  std::unique_ptr<NativeSocket> fNative;
};

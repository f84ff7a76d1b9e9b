// SPDX-License-Identifier: MIT
// The toolkit's network library would cost each start more than two milliseconds, so it comes with a module
// that is loaded when the first request is sent.
#include "platform/HTTPSocket.h"

#include <QCoreApplication>
#include <QLibrary>
#include <algorithm>

#include "platform/Machine.h"
#include "platform/qt/NativeRequest.h"

namespace {

constexpr std::uint64_t kLargestContent = std::uint64_t{2} << 30;

std::uint64_t ContentBound() {
  std::int64_t megabytes = 0;
  if (!Machine::Current().InstalledMemory(megabytes)) return kLargestContent;
  return std::min(kLargestContent, static_cast<std::uint64_t>(megabytes) * 1'000'000 / 2);
}

/// The module's door; none with a `failure` that says why. What is loaded once stays loaded.
StartRequestFunction* LoadNetwork(std::string& failure) {
  QLibrary module(QCoreApplication::applicationDirPath() + "/TessarineNetwork.so");
  const QFunctionPointer door = module.resolve(kStartRequest);
  if (door == nullptr) failure = module.errorString().toStdString();
  return reinterpret_cast<StartRequestFunction*>(door);
}

}  // namespace

/// Lives on the main thread; a request comes to it there as an event.
class NativeSocket : public QObject {
 public:
  explicit NativeSocket(HTTPSocket& owner) : fOwner(owner) {}

  void Start() {
    std::string failure;
    StartRequestFunction* start = LoadNetwork(failure);
    if (start == nullptr) return fOwner.Error(failure);
    fParts.bound = ContentBound();
    fRequest.reset(start(fParts, [this](RequestOutcome outcome) {
      if (outcome.failure.empty())
        fOwner.PageReceived(outcome.address, outcome.status, std::move(outcome.content));
      else
        fOwner.Error(outcome.failure);
    }));
  }

  RequestParts fParts;  // the sender's until it has sent

 private:
  HTTPSocket& fOwner;
  std::unique_ptr<NativeRequest> fRequest;
};

HTTPSocket::HTTPSocket() : fNative(std::make_unique<NativeSocket>(*this)) {}

HTTPSocket::~HTTPSocket() = default;

void HTTPSocket::SetRequestHeader(const std::string& name, const std::string& value) {
  fNative->fParts.headers.emplace_back(name, value);
}

void HTTPSocket::SetRequestContent(const std::string& bytes, const std::string& type) {
  fNative->fParts.content = bytes;
  SetRequestHeader("Content-Type", type);
}

void HTTPSocket::Send(const std::string& method, const std::string& url) {
  fNative->fParts.method = method;
  fNative->fParts.address = url;
  NativeSocket* native = fNative.get();
  QMetaObject::invokeMethod(
      native, [native] { native->Start(); }, Qt::QueuedConnection);
}

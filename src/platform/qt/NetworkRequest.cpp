// SPDX-License-Identifier: MIT
// A request by the toolkit's web client. It decides what a reply's frame says; what is a failure is decided
// here.
#include <QHostAddress>
#include <QNetworkAccessManager>
#include <QNetworkProxy>
#include <QNetworkReply>
#include <memory>
#include <new>

#include "platform/qt/NativeRequest.h"

namespace {

constexpr qint64 kReadBuffer = 256 * 1024;  // what is more waits at the server

bool IsWebAddress(const QUrl& url) {
  return url.isValid() && !url.host().isEmpty() && (url.scheme() == "http" || url.scheme() == "https");
}

/// The desktop's proxies. What this machine serves itself is reached without one.
class DesktopProxies : public QNetworkProxyFactory {
 public:
  QList<QNetworkProxy> queryProxy(const QNetworkProxyQuery& query) override {
    const QString host = query.peerHostName();
    if (host == "localhost" || QHostAddress(host).isLoopback()) return {QNetworkProxy::NoProxy};
    return systemProxyForQuery(query);
  }
};

/// Does the error only repeat what the status of a page says?
bool TellsOfStatus(QNetworkReply::NetworkError error) {
  using Reply = QNetworkReply;
  return error == Reply::ProxyAuthenticationRequiredError || error == Reply::ProtocolInvalidOperationError ||
         (error >= Reply::ContentAccessDenied && error <= Reply::UnknownContentError) ||
         (error >= Reply::InternalServerError && error <= Reply::UnknownServerError);
}

class NetworkRequest final : public QObject, public NativeRequest {
 public:
  NetworkRequest(const RequestParts& parts, RequestEnd end) : fBound(parts.bound), fEnd(std::move(end)) {
    const QUrl url(QString::fromStdString(parts.address));
    if (!IsWebAddress(url)) {
      Fail("No web address: " + parts.address);
      return;
    }
    QNetworkRequest request(url);
    // Bytes are handed on as they come.
    request.setRawHeader("Accept-Encoding", "identity");
    for (const auto& [name, value] : parts.headers)
      request.setRawHeader(QByteArray::fromStdString(name), QByteArray::fromStdString(value));
    fClient = std::make_unique<QNetworkAccessManager>();
    fClient->setProxyFactory(new DesktopProxies);
    fReply = parts.method == "POST" ? fClient->post(request, QByteArray::fromStdString(parts.content))
                                    : fClient->get(request);
    fReply->setReadBufferSize(kReadBuffer);
    connect(fReply, &QNetworkReply::redirected, this, &NetworkRequest::CheckRedirect);
    connect(fReply, &QNetworkReply::readyRead, this, &NetworkRequest::Drain);
    connect(fReply, &QNetworkReply::finished, this, &NetworkRequest::Finish);
  }
  ~NetworkRequest() override { Drop(); }

 private:
  void CheckRedirect(const QUrl& url) {
    if (!IsWebAddress(url)) Fail("A redirect to no web address: " + url.toString().toStdString());
  }

  void Drain() {
    try {
      while (fReply != nullptr && fReply->bytesAvailable() > 0) {
        const std::span<char> room = fContent.Room();
        const qint64 got = fReply->read(room.data(), static_cast<qint64>(room.size()));
        if (got <= 0) return;
        fContent.Grow(static_cast<std::size_t>(got));
        if (fContent.Size() > fBound) Fail("The content is larger than this machine can hold");
      }
    } catch (const std::bad_alloc&) {
      Fail("There is no memory left for the content");
    }
    if (fReply != nullptr && StatedLength() > static_cast<qint64>(fBound))
      Fail("The content is larger than this machine can hold");
  }

  /// -1 where the server doesn't tell.
  qint64 StatedLength() const {
    const QVariant length = fReply->header(QNetworkRequest::ContentLengthHeader);
    return length.isValid() ? length.toLongLong() : -1;
  }

  void Finish() {
    Drain();
    if (fReply == nullptr) return;
    const int status = fReply->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
    const QNetworkReply::NetworkError error = fReply->error();
    if (error != QNetworkReply::NoError && (status < 400 || !TellsOfStatus(error)))
      return Fail(fReply->errorString().toStdString());
    const qint64 stated = StatedLength();
    if (stated >= 0 && static_cast<std::uint64_t>(stated) != fContent.Size())
      return Fail("The content isn't as long as stated");
    End({"", fReply->url().toEncoded().toStdString(), status, std::move(fContent)});
  }

  void Fail(std::string why) { End({std::move(why), "", 0, {}}); }

  /// By way of the event loop: who is told may destroy this object, and the client is at work.
  void End(RequestOutcome outcome) {
    Drop();
    fOutcome = std::move(outcome);
    QMetaObject::invokeMethod(this, &NetworkRequest::Tell, Qt::QueuedConnection);
  }

  void Tell() {
    const RequestEnd end = std::exchange(fEnd, nullptr);
    if (end) end(std::move(fOutcome));
  }

  void Drop() {
    QNetworkReply* reply = std::exchange(fReply, nullptr);
    if (reply == nullptr) return;
    reply->disconnect(this);
    reply->abort();
  }

  const std::uint64_t fBound;
  RequestEnd fEnd;
  RequestOutcome fOutcome;
  // A client for each request: its connections end with it, also those that nothing is received from.
  std::unique_ptr<QNetworkAccessManager> fClient;
  QNetworkReply* fReply = nullptr;  // the client's; none before the request is made and once it is dropped
  MemoryBlock fContent;
};

}  // namespace

extern "C" __attribute__((visibility("default"))) NativeRequest* TessarineStartRequest(
    const RequestParts& parts, RequestEnd end) {
  return new NetworkRequest(parts, std::move(end));
}
static_assert(std::is_same_v<decltype(TessarineStartRequest), StartRequestFunction>);

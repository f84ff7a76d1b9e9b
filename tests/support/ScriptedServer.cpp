// SPDX-License-Identifier: MIT
#include "support/ScriptedServer.h"

#include <QSslKey>
#include <QSslServer>
#include <utility>

namespace {

/// A head that tells a length has a body of that length.
bool IsWhole(const std::string& request) {
  const std::size_t end = request.find("\r\n\r\n");
  if (end == std::string::npos) return false;
  const std::size_t length = request.find("Content-Length: ");
  return length > end || request.size() >= end + 4 + std::stoul(request.substr(length + 16));
}

}  // namespace

std::string Page(const std::string& status, const std::string& body, const std::string& lines) {
  return "HTTP/1.1 " + status + "\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" + lines +
         "\r\n" + body;
}

ScriptedServer::ScriptedServer(const QSslConfiguration& tls) : fOverTls(!tls.privateKey().isNull()) {
  if (fOverTls) {
    auto* server = new QSslServer;
    server->setSslConfiguration(tls);
    fServer = server;
  } else {
    fServer = new QTcpServer;
  }
  fServer->moveToThread(&fThread);
  QObject::connect(&fThread, &QThread::finished, fServer, &QObject::deleteLater);
  QObject::connect(fServer, &QTcpServer::pendingConnectionAvailable, fServer, [this] {
    while (QTcpSocket* socket = fServer->nextPendingConnection()) Serve(*socket);
  });
  fThread.start();
  const auto listen = [this] {
    fServer->listen(QHostAddress::LocalHost);
    fPort = fServer->serverPort();
  };
  QMetaObject::invokeMethod(fServer, listen, Qt::BlockingQueuedConnection);
}

ScriptedServer::~ScriptedServer() {
  fThread.quit();
  fThread.wait();
}

std::string ScriptedServer::Address(const std::string& path, const std::string& host) const {
  return (fOverTls ? "https://" : "http://") + host + ":" + std::to_string(fPort) + path;
}

void ScriptedServer::Answer(const std::string& target, const Reply& reply) {
  const std::lock_guard lock(fMutex);
  fReplies[target] = reply;
}

std::vector<std::string> ScriptedServer::TakeRequests() {
  const std::lock_guard lock(fMutex);
  return std::exchange(fRequests, {});
}

bool ScriptedServer::AwaitNoConnection() const {
  for (int tries = 10'000; fConnections > 0 && tries > 0; --tries) QThread::msleep(1);
  return fConnections == 0;
}

void ScriptedServer::Serve(QTcpSocket& socket) {
  ++fConnections;
  QObject::connect(&socket, &QTcpSocket::disconnected, fServer, [this] { --fConnections; });
  const auto received = std::make_shared<std::string>();
  const auto read = [this, &socket, received] {
    *received += socket.readAll().toStdString();
    if (!IsWhole(*received)) return;
    const std::size_t target = received->find(' ') + 1;
    Reply reply;
    {
      const std::lock_guard lock(fMutex);
      reply = fReplies[received->substr(target, received->find(' ', target) - target)];
      fRequests.push_back(std::exchange(*received, ""));
    }
    Respond(socket, reply);
  };
  QObject::connect(&socket, &QTcpSocket::readyRead, &socket, read);
  read();
}

void ScriptedServer::Respond(QTcpSocket& socket, const Reply& reply) {
  socket.write(QByteArray::fromStdString(reply.bytes));
  if (reply.endless) {
    const QByteArray last = QByteArray::fromStdString(reply.bytes).right(64 * 1024);
    QObject::connect(&socket, &QTcpSocket::bytesWritten, &socket, [&socket, last] {
      if (socket.bytesToWrite() == 0) socket.write(last);
    });
  } else if (reply.end == Reply::Close) {
    socket.disconnectFromHost();
  }
}

// SPDX-License-Identifier: MIT
// A web server on this machine that says what the case wants, well-formed or not.
#pragma once

#include <QSslConfiguration>
#include <QTcpServer>
#include <QTcpSocket>
#include <QThread>
#include <atomic>
#include <map>
#include <mutex>
#include <string>
#include <vector>

struct Reply {
  enum End { Close, Hang };
  std::string bytes{};   // head and body, all at once
  End end = Close;       // after the bytes
  bool endless = false;  // the last 64 KiB of the bytes again and again
};

/// A reply with its head: the status with its words, further lines with their line ends, the body.
std::string Page(const std::string& status, const std::string& body, const std::string& lines = "");

/// Serves from a thread of its own as long as it lives.
class ScriptedServer {
 public:
  /// Over TLS where a configuration with a key is given.
  explicit ScriptedServer(const QSslConfiguration& tls = {});
  ~ScriptedServer();
  ScriptedServer(const ScriptedServer&) = delete;
  ScriptedServer& operator=(const ScriptedServer&) = delete;

  std::string Address(const std::string& path, const std::string& host = "127.0.0.1") const;
  /// Requests for this target, as the first line of a request has it. For any other the connection ends.
  void Answer(const std::string& target, const Reply& reply);
  /// The requests since the last call, each as it came, head and body.
  std::vector<std::string> TakeRequests();
  /// Waits until no connection is left; false if that takes too long.
  bool AwaitNoConnection() const;

 private:
  void Serve(QTcpSocket& socket);
  void Respond(QTcpSocket& socket, const Reply& reply);

  QThread fThread;
  QTcpServer* fServer;  // belongs to the thread
  bool fOverTls;
  int fPort = 0;
  std::atomic<int> fConnections = 0;
  std::mutex fMutex;  // of what follows
  std::map<std::string, Reply> fReplies;
  std::vector<std::string> fRequests;
};

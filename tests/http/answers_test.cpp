// SPDX-License-Identifier: MIT
// What counts as a page and what as a failure. The servers here say it byte by byte.
#include <QSslCertificate>
#include <QSslKey>

#include "http/HttpTest.h"

class Answers : public HttpTest {};

TEST_F(Answers, AnyWholeAnswerIsAPageAndNoOtherIs) {
  std::string large(3'000'000, ' ');
  for (std::size_t i = 0; i < large.size(); ++i) large[i] = static_cast<char>(i * i >> 7);
  const std::string zipped("\x1f\x8b\x08\0\0\0\0\0\0\x03\xcb\x48\xcd\xc9\xc9\x07\0\x86\xa6\x10\x36\x05\0\0\0",
                           25);
  const std::string chunked = "HTTP/1.1 200 OK\r\nTransfer-Encoding: chunked\r\n\r\n5\r\nhello\r\n";
  const std::string kLogin = "-Authenticate: Basic realm=\"x\"\r\n";
  const std::tuple<const char*, Reply, std::string> rows[] = {
      {"/plain", {Page("200 OK", "hello")}, "200 hello\n"},
      {"/empty", {.bytes = Page("200 OK", ""), .end = Reply::Hang}, "200 \n"},
      {"/unstated", {"HTTP/1.0 200 OK\r\n\r\n" + large}, "200 " + large + "\n"},
      {"/none", {Page("404 Not Found", "no")}, "404 no\n"},
      {"/secret", {Page("401 Unauthorized", "who?", "WWW" + kLogin)}, "401 who?\n"},
      {"/proxy", {Page("407 Proxy", "who?", "Proxy" + kLogin)}, "407 who?\n"},
      {"/broken", {Page("500 Internal Server Error", "oh")}, "500 oh\n"},
      {"/moved", {Page("302 Found", "nothing here", "Location: /plain\r\n")}, "200 hello\n"},
      {"/circle", {Page("302 Found", "", "Location: /circle\r\n")}, "error\n"},
      {"/disk", {Page("302 Found", "", "Location: file:///etc/passwd\r\n")}, "error\n"},
      {"/zipped", {Page("200 OK", zipped, "Content-Encoding: gzip\r\n")}, "200 " + zipped + "\n"},
      {"/chunks", {chunked + "6\r\n world\r\n0\r\n\r\n"}, "200 hello world\n"},
      {"/cut", {"HTTP/1.1 200 OK\r\nContent-Length: 6\r\n\r\nhello"}, "error\n"},
      {"/nonecut", {"HTTP/1.1 404 Not Found\r\nContent-Length: 6\r\n\r\nhello"}, "error\n"},
      {"/silence", {""}, "error\n"},
  };
  for (const auto& [target, reply, events] : rows) fServer.Answer(target, reply);
  for (const auto& [target, reply, events] : rows) {
    EXPECT_TRUE(Events(fServer.Address(target)) == events) << target;
    const bool page = events != "error\n";
    const std::string body = page ? events.substr(4, events.size() - 5) : "";
    EXPECT_TRUE(GlobalsKv::HttpGet(fServer.Address(target), 600) == body) << target;
  }
  Listener moved;
  Events(moved, fServer.Address("/moved"));
  EXPECT_EQ(moved.fUrl, fServer.Address("/plain"));
}

TEST_F(Answers, NoServerNoPage) {
  const std::string closed = ScriptedServer().Address("/");
  for (const std::string& address : {closed, "file://" + fTree.Write("file", "hello"),
                                     std::string("http://nowhere.invalid/"), std::string("http:///x")}) {
    Listener listener;
    EXPECT_EQ(Events(listener, address), "error\n") << address;
    EXPECT_NE(listener.fReason, "") << address;
  }
}

TEST_F(Answers, OnlyACertificateThatTheSystemTrustsForThisHostIsTaken) {
  const std::string make =
      "openssl req -x509 -newkey ec -pkeyopt ec_paramgen_curve:prime256v1 -nodes -days 2 -subj /CN=case "
      "-addext subjectAltName=IP:127.0.0.1 -keyout " +
      fTree.Path("key") + " -out " + fTree.Path("certificate") + " 2>/dev/null";
  ASSERT_EQ(std::system(make.c_str()), 0);
  QSslConfiguration tls;
  tls.setLocalCertificate(QSslCertificate::fromPath(QString::fromStdString(fTree.Path("certificate"))).at(0));
  tls.setPrivateKey(QSslKey(QByteArray::fromStdString(fTree.Read("key")), QSsl::Ec));
  ScriptedServer server(tls), doubtful(tls);
  server.Answer("/", {Page("200 OK", "hello")});
  server.Answer("/down", {Page("302 Found", "", "Location: " + fServer.Address("/") + "\r\n")});
  fServer.Answer("/", {Page("200 OK", "plain")});
  fServer.Answer("/up", {Page("301 Moved", "", "Location: " + server.Address("/") + "\r\n")});
  EXPECT_EQ(Events(doubtful.Address("/")), "error\n") << "nobody vouches for it";
  EXPECT_TRUE(doubtful.TakeRequests().empty());

  const QSslConfiguration usual = QSslConfiguration::defaultConfiguration();
  QSslConfiguration trusting = usual;
  trusting.addCaCertificate(tls.localCertificate());
  QSslConfiguration::setDefaultConfiguration(trusting);
  for (const std::string& address : {server.Address("/"), fServer.Address("/up")})
    EXPECT_EQ(Events(address), "200 hello\n");
  EXPECT_EQ(Events(server.Address("/down")), "error\n");
  EXPECT_EQ(Events(server.Address("/", "localhost")), "error\n") << "not the name in the certificate";
  QSslConfiguration::setDefaultConfiguration(usual);
}

TEST_F(Answers, ContentIsBoundedByHalfTheMemory) {
  fMachine.fMemory = 2;
  const std::string most(1'000'000, 'x');
  const std::string kHead = "HTTP/1.1 200 OK\r\n";
  const std::tuple<const char*, Reply, std::string> rows[] = {
      {"/most", {Page("200 OK", most)}, "200 " + most + "\n"},
      {"/more", {kHead + "\r\n" + most + "x"}, "error\n"},
      {"/stated", {.bytes = kHead + "Content-Length: 1000001\r\n\r\nx", .end = Reply::Hang}, "error\n"},
      {"/endless", {.bytes = kHead + "\r\n" + most, .endless = true}, "error\n"},
  };
  for (const auto& [target, reply, events] : rows) {
    fServer.Answer(target, reply);
    EXPECT_TRUE(Events(fServer.Address(target)) == events) << target;
    EXPECT_TRUE(fServer.AwaitNoConnection()) << target;
  }
}

// SPDX-License-Identifier: MIT
// What goes out, by which way, and what a program is like that can't send anything.
#include <cstdlib>

#include "http/HttpTest.h"

class Requests : public HttpTest {
 protected:
  const std::string fHost = fServer.Address("").substr(7);

  /// Has the head this line? Names of fields count in any case.
  static bool HasLine(const std::string& request, const std::string& line) {
    const QString head = QString::fromStdString(request.substr(0, request.find("\r\n\r\n") + 2));
    return head.contains("\r\n" + QString::fromStdString(line), Qt::CaseInsensitive);
  }
};

TEST_F(Requests, OnTheWire) {
  fServer.Answer("/a%20b/%C3%BC?x=1&y=%262", {Page("200 OK", "got")});
  const std::string address = "HTTP://me:s%20t@" + fHost + "/a b/ü?x=1&y=%262#part";
  EXPECT_EQ(GlobalsKv::HttpGet(address, 600), "got");
  EXPECT_EQ(GlobalsKv::HttpPostNew(address, "", 600), "got");
  for (const std::string& request : fServer.TakeRequests()) {
    EXPECT_TRUE(request.starts_with("GET /a%20b/%C3%BC?x=1&y=%262 HTTP/1.1\r\n")) << request;
    for (const std::string& line :
         {"Host: " + fHost, std::string("User-Agent: Lumare"), std::string("Accept-Encoding: identity")})
      EXPECT_TRUE(HasLine(request, line + "\r\n")) << request;
    EXPECT_FALSE(HasLine(request, "Content-")) << request;
  }

  std::string fields;
  GlobalsKv::PostDataAppend(fields, "name", "Jörg & Ümit");
  GlobalsKv::PostDataAppend(fields, "a=b", "%3D");
  EXPECT_EQ(fields, "name=Jörg & Ümit&a=b=%3D");
  // What was posted is asked for elsewhere after one kind of redirect, posted again after the other.
  fServer.Answer("/see", {Page("303 See Other", "", "Location: form?1\r\n")});
  fServer.Answer("/again", {Page("307 Temporary Redirect", "", "Location: //" + fHost + "/form?2\r\n")});
  fServer.Answer("/form?1", {Page("200 OK", "seen")});
  fServer.Answer("/form?2", {Page("201 Created", "again")});
  EXPECT_EQ(GlobalsKv::HttpPostNew(fServer.Address("/see"), fields, 600), "seen");
  EXPECT_EQ(GlobalsKv::HttpPost(fServer.Address("/again"), fields, 600), "again");
  std::vector<std::string> requests = fServer.TakeRequests();
  ASSERT_EQ(requests.size(), 4U);
  EXPECT_TRUE(requests[1].starts_with("GET /form?1 ") && !HasLine(requests[1], "Content-")) << requests[1];
  EXPECT_TRUE(requests[3].starts_with("POST /form?2 ")) << requests[3];
  requests.erase(requests.begin() + 1);
  for (const std::string& request : requests) {
    EXPECT_TRUE(HasLine(request, "User-Agent: Lumare\r\n")) << request;
    EXPECT_TRUE(HasLine(request, "Content-Type: application/x-www-form-urlencoded\r\n")) << request;
    EXPECT_TRUE(request.ends_with("\r\n\r\n" + fields)) << request;
  }
}

TEST_F(Requests, TheDesktopsProxyIsUsedButNotForThisMachine) {
  fServer.Answer("http://lantern.invalid/x", {Page("200 OK", "through the proxy")});
  fServer.Answer("/x", {Page("200 OK", "straight")});
  ::setenv("http_proxy", ("http://me:secret@" + fHost).c_str(), 1);
  EXPECT_EQ(GlobalsKv::HttpGet("http://lantern.invalid/x", 600), "through the proxy");
  for (const char* host : {"127.0.0.1", "localhost"})
    EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/x", host), 600), "straight");
  ::unsetenv("http_proxy");
}

// Run by the case below, in a program of its own.
TEST_F(Requests, DISABLED_WithoutItsModule) {
  Listener listener;
  EXPECT_EQ(Events(listener, fServer.Address("/")), "error\n");
  EXPECT_NE(listener.fReason.find("TessarineNetwork.so"), std::string::npos) << listener.fReason;
}

TEST_F(Requests, AMissingOrBrokenModuleIsAFailureThatSaysWhy) {
  const std::string program = fTree.Path("http_test");
  fs::copy_file("/proc/self/exe", program);
  const std::string command =
      program + " --gtest_also_run_disabled_tests --gtest_filter='*.DISABLED_*' >/dev/null";
  EXPECT_EQ(std::system(command.c_str()), 0);
  fTree.Write("TessarineNetwork.so", "no module");
  EXPECT_EQ(std::system(command.c_str()), 0);
}

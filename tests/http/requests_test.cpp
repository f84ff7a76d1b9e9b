// SPDX-License-Identifier: MIT
// What goes out, by which way, and what a program is like that can't send anything.
#include <sys/resource.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>

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
  const std::string address = fServer.Address("/a b/ü?x=1&y=%262");
  EXPECT_EQ(GlobalsKv::HttpGet(address, 600), "got");
  EXPECT_EQ(GlobalsKv::HttpPostNew(address, "", 600), "got");
  for (const std::string& request : fServer.TakeRequests()) {
    EXPECT_TRUE(request.starts_with("GET /a%20b/%C3%BC?x=1&y=%262 HTTP/1.1\r\n")) << request;
    EXPECT_TRUE(HasLine(request, "User-Agent: Lumare\r\n")) << request;
    EXPECT_TRUE(HasLine(request, "Accept-Encoding: identity\r\n")) << request;
    EXPECT_FALSE(HasLine(request, "Content-")) << request;
    EXPECT_TRUE(request.ends_with("\r\n\r\n")) << request;
  }

  std::string fields;
  GlobalsKv::PostDataAppend(fields, "name", "Jörg & Ümit");
  EXPECT_EQ(fields, "name=Jörg & Ümit");
  GlobalsKv::PostDataAppend(fields, "a=b", "%3D");
  EXPECT_EQ(fields, "name=Jörg & Ümit&a=b=%3D");
  fServer.Answer("/form", {Page("201 Created", "thanks")});
  EXPECT_EQ(GlobalsKv::HttpPostNew(fServer.Address("/form"), fields, 600), "thanks");
  EXPECT_EQ(GlobalsKv::HttpPost(fServer.Address("/form"), fields, 600), "thanks");
  const std::vector<std::string> posts = fServer.TakeRequests();
  ASSERT_EQ(posts.size(), 2U);
  for (const std::string& request : posts) {
    EXPECT_TRUE(request.starts_with("POST /form HTTP/1.1\r\n")) << request;
    EXPECT_TRUE(HasLine(request, "User-Agent: Lumare\r\n")) << request;
    EXPECT_TRUE(HasLine(request, "Content-Type: application/x-www-form-urlencoded\r\n")) << request;
    EXPECT_TRUE(request.ends_with("\r\n\r\n" + fields)) << request;
  }

  // What was posted is asked for elsewhere after one kind of redirect, posted again after the other.
  fServer.Answer("/see", {Page("303 See Other", "", "Location: form?1\r\n")});
  fServer.Answer("/again", {Page("307 Temporary Redirect", "", "Location: //" + fHost + "/form?2\r\n")});
  fServer.Answer("/form?1", {Page("200 OK", "seen")});
  fServer.Answer("/form?2", {Page("200 OK", "again")});
  EXPECT_EQ(GlobalsKv::HttpPost(fServer.Address("/see"), fields, 600), "seen");
  EXPECT_EQ(GlobalsKv::HttpPost(fServer.Address("/again"), fields, 600), "again");
  const std::vector<std::string> moved = fServer.TakeRequests();
  ASSERT_EQ(moved.size(), 4U);
  EXPECT_TRUE(moved[1].starts_with("GET /form?1 ") && !HasLine(moved[1], "Content-")) << moved[1];
  EXPECT_TRUE(moved[3].starts_with("POST /form?2 ") && moved[3].ends_with("\r\n\r\n" + fields)) << moved[3];

  fServer.Answer("/", {Page("200 OK", "root")});
  EXPECT_EQ(GlobalsKv::HttpGet("HTTP://me:s%20t@" + fHost + "#part", 600), "root");
  const std::string request = fServer.TakeRequests().at(0);
  EXPECT_TRUE(HasLine(request, "Host: " + fHost + "\r\n")) << request;
}

TEST_F(Requests, TheDesktopsProxyIsUsedButNotForThisMachine) {
  fServer.Answer("http://lantern.invalid/x", {Page("200 OK", "through the proxy")});
  fServer.Answer("/x", {Page("200 OK", "straight")});
  ::setenv("http_proxy", ("http://me:secret@" + fHost).c_str(), 1);
  EXPECT_EQ(GlobalsKv::HttpGet("http://lantern.invalid/x", 600), "through the proxy");
  const std::string request = fServer.TakeRequests().at(0);
  EXPECT_TRUE(HasLine(request, "Host: lantern.invalid\r\n")) << request;
  EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/x"), 600), "straight");
  EXPECT_EQ(GlobalsKv::HttpGet(fServer.Address("/x", "localhost"), 600), "straight");
  ::unsetenv("http_proxy");
}

TEST_F(Requests, ContentBecomesOneStringOrIsReportedAsLost) {
  const std::string pattern = "0123456789abcdef";
  const auto block = [&pattern](std::size_t size) {
    MemoryBlock bytes;
    while (bytes.Size() < size) {
      const std::span<char> room = bytes.Room();
      const std::size_t count = std::min({room.size(), size - bytes.Size(), std::size_t{300'000}});
      for (std::size_t i = 0; i < count; ++i) room[i] = pattern[(bytes.Size() + i) % pattern.size()];
      bytes.Grow(count);
    }
    return bytes;
  };
  for (const std::size_t size : {0U, 1U, 1U << 20, (1U << 20) + 1, 2'500'000U}) {
    TKvHttp http;
    http.PageReceived("", 200, block(size));
    ASSERT_EQ(http.fResponse.size(), size);
    for (std::size_t i = 0; i < size; i += 4099) ASSERT_EQ(http.fResponse[i], pattern[i % 16]) << i;
  }
#ifndef __SANITIZE_ADDRESS__  // its own memory counts
  constexpr std::size_t kLarge = 64 << 20;
  TKvHttp http;
  MemoryBlock large = block(kLarge);
  std::size_t pages = 0;
  std::ifstream("/proc/self/statm") >> pages;
  rlimit usual{};
  ASSERT_EQ(::getrlimit(RLIMIT_AS, &usual), 0);
  const rlimit tight{pages * 4096 + kLarge / 2, usual.rlim_max};
  ASSERT_EQ(::setrlimit(RLIMIT_AS, &tight), 0);
  http.PageReceived("", 200, std::move(large));
  ASSERT_EQ(::setrlimit(RLIMIT_AS, &usual), 0);
  EXPECT_EQ(http.fResponse, "Exception");
  EXPECT_TRUE(http.fDone);
#endif
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

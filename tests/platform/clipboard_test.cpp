// SPDX-License-Identifier: MIT
// The clipboard on a display of the case's own: what is read from owners good and bad, and the program that
// keeps a text. The other side is xclip, or a bare client.
#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <array>
#include <chrono>
#include <climits>
#include <functional>
#include <thread>

#include "BareClient.h"
#include "base/Encoding.h"
#include "platform/desktop/X11Client.h"
#include "platform/desktop/X11Keeper.h"
#include "platform/desktop/X11Reader.h"
#include "platform/posix/Process.h"
#include "support/TemporaryTree.h"

namespace {

using std::chrono::milliseconds;
constexpr char kNoText[] = "<none>";

/// Each number once, and characters of two and three bytes, so that no piece is like another.
std::string LongText(std::size_t bytes) {
  std::string text;
  for (int i = 0; text.size() < bytes; ++i) text += std::to_string(i) + (i % 2 == 0 ? "\u00E9" : "\u20AC");
  text.resize(bytes - 1);
  return text.substr(0, text.find_last_of("0123456789") + 1) + "\n";
}

class Clipboard : public ::testing::Test {
 protected:
  void SetUp() override {
    fServer =
        StartPiped("Xvfb", {"-screen", "0", "64x64x24", "-nolisten", "tcp", "-noreset", "-displayfd", "1"});
    if (fServer.id < 0 || ::system("command -v xclip >/dev/null") != 0)
      GTEST_SKIP() << "no Xvfb, or no xclip";
    ::fcntl(fServer.output, F_SETFL, 0);
    std::string number;
    for (char letter = 0; ::read(fServer.output, &letter, 1) == 1 && letter != '\n';) number += letter;
    ASSERT_NE(number, "") << "Xvfb found no display";
    ::setenv("DISPLAY", (":" + number).c_str(), 1);
  }
  void TearDown() override {
    if (fServer.id < 0) return;
    EndChild(fServer.id);
    ::close(fServer.output);
    ::close(fServer.error);
  }
  /// What is read while `owner` answers; kNoText for silence.
  static std::string Read(BareClient* owner = nullptr, const ClipboardBounds& bounds = {}) {
    std::string text = "of before";
    const ClipboardAnswer answer = ReadX11Clipboard(
        text,
        [owner] {
          if (owner != nullptr) owner->Work();
          return true;
        },
        bounds);
    EXPECT_NE(answer, ClipboardAnswer::kElsewhere);
    return answer == ClipboardAnswer::kSilence ? kNoText : text;
  }
  static std::string Keeper() {
    return fs::read_symlink("/proc/self/exe").parent_path() / "TessarineClipboard";
  }
  void Run(const std::string& command) const {
    EXPECT_EQ(::system(("cd '" + fTree.Path() + "' && " + command + " >out 2>/dev/null").c_str()), 0)
        << command;
  }
  /// By xclip, which goes on alone before the clipboard is its own.
  void Copy(const std::string& text, const std::string& by = "xclip -i -selection clipboard in") const {
    const X11Client watch;
    const xcb_window_t before = watch.ClipboardOwner();
    fTree.Write("in", text);
    Run(by);
    while (watch.Connected() && watch.ClipboardOwner() == before) ::usleep(1000);
  }

  TemporaryTree fTree;
  PipedProcess fServer;
};

/// Differences of megabytes are nobody's to read.
void ExpectSame(const std::string& one, const std::string& other) {
  EXPECT_TRUE(one == other) << one.size() << " and " << other.size() << " bytes";
}

}  // namespace

TEST_F(Clipboard, TextsOfAnyLengthGoFromHandToHand) {
  int waits = 0;
  std::string text;
  EXPECT_EQ(ReadX11Clipboard(text, [&] { return ++waits > 0; }), ClipboardAnswer::kText);
  EXPECT_EQ(text + std::to_string(waits), "0") << "nobody to wait for";

  const std::string story = "\u00C9t\u00E9 \u20AC\n";
  for (const std::string& copied : {story, std::string(), LongText(5'000'000)}) {
    Copy(copied);
    ExpectSame(Read(), copied);
  }
  Copy(story, "(" + Keeper() + " <in | true) &");
  EXPECT_EQ(Read(), story) << "who started it has gone before the answer";

  for (const std::string& kept : {story, LongText(5'000'000)}) {
    StartWithText(Keeper(), kept);
    ExpectSame(Read(), kept);
    Run("xclip -o -selection clipboard -target UTF8_STRING");
    ExpectSame(fTree.Read("out"), kept);
    Run("xclip -o -selection clipboard -target STRING | iconv -f latin1 -t utf8");
    ExpectSame(fTree.Read("out"), Latin1ToUtf8(Utf8ToLatin1(kept)));
  }
  // Two at once, each at its own pace, in different encodings; the text goes meanwhile to another program.
  const std::string kept = Read();
  BareClient quick;
  BareClient slow;
  quick.Ask("UTF8_STRING");
  slow.Ask("STRING");
  EXPECT_TRUE(slow.TakePiece());
  Copy(story);
  for (int i = 0; !quick.fDone || !slow.fDone; ++i) i % 3 == 0 ? slow.TakePiece() : quick.TakePiece();
  ExpectSame(quick.fText, kept);
  ExpectSame(slow.fText, Utf8ToLatin1(kept));
}

TEST_F(Clipboard, ATextBeyondTheBoundIsNoneAndItsOwnerIsLetFinish) {
  const std::string longest(64U << 20, 'x');
  StartWithText(Keeper(), longest);
  ExpectSame(Read(), longest);

  BareClient owner;
  int pieces = 0;
  xcb_window_t reader = 0;
  owner.fAsked = [&](const auto& request) {
    pieces = 0;
    reader = request.requestor;
    owner.Give(request, "INCR", 32, "1234");
  };
  owner.fTaken = [&](const auto& change) {
    owner.Put(reader, change.atom, "UTF8_STRING", 8, pieces++ < 4 ? "abcd" : "");
  };
  owner.Own();
  for (const auto& [bytes, text] : {std::pair(std::size_t{16}, "abcdabcdabcdabcd"), {15, ""}}) {
    EXPECT_EQ(Read(&owner, {.bytes = bytes}), text) << bytes;
    EXPECT_EQ(pieces, 5) << bytes;
  }
  // A value that comes as a whole, longer than one look at it.
  const std::string whole = LongText(3'000'000);
  owner.fTaken = nullptr;
  owner.fAsked = [&](const auto& request) { owner.Give(request, "UTF8_STRING", 8, whole); };
  ExpectSame(Read(&owner), whole);
  EXPECT_EQ(Read(&owner, {.bytes = 2'000'000}), "");
}

TEST_F(Clipboard, OwnersThatDontKeepToTheRulesComeToADefinedEnd) {
  using Request = xcb_selection_request_event_t;
  using Asked = std::function<void(BareClient&, const Request&)>;
  using Taken = std::function<void(BareClient&, xcb_window_t, xcb_atom_t)>;
  constexpr milliseconds kSoon(60);
  const auto give = [](const char* type, std::uint8_t format, const std::string& bytes) -> Asked {
    return [=](BareClient& owner, const Request& request) { owner.Give(request, type, format, bytes); };
  };
  const auto piece = [](const char* type, std::uint8_t format, const char* bytes) -> Taken {
    return [=](BareClient& owner, xcb_window_t window, xcb_atom_t property) {
      owner.Put(window, property, type, format, bytes);
    };
  };
  const Asked begin = give("INCR", 32, "1234");
  const Asked latin1 = [=](BareClient& owner, const Request& request) {
    const bool taken = request.target == XCB_ATOM_STRING;
    taken ? owner.Give(request, "STRING", 8, "caf\xE9") : owner.Tell(request, false);
  };
  const std::tuple<const char*, std::string, Asked, Taken> rows[] = {
      {"silence", kNoText, [](BareClient&, const Request&) {}, nullptr},
      {"silence in the middle", kNoText, begin, nullptr},
      {"no target", "", [](BareClient& o, const Request& request) { o.Tell(request, false); }, nullptr},
      {"Latin-1 alone", "caf\u00E9", latin1, nullptr},
      {"no UTF-8", "caf\u00E9 \u20AC", give("UTF8_STRING", 8, std::string("caf\x8E \u20AC\0more", 13)),
       nullptr},
      {"texts of words", "", give("UTF8_STRING", 16, "1234"), nullptr},
      {"pieces of something else", "", begin, piece("PIXMAP", 32, "1234")},
      {"pieces without an end", "", begin, piece("UTF8_STRING", 8, "x")},
      {"ends when asked", "", [](BareClient& owner, const Request&) { owner.End(); }, nullptr},
      {"ends in the middle", "", begin, [](BareClient& owner, xcb_window_t, xcb_atom_t) { owner.End(); }},
  };
  for (const auto& [why, heard, asked, taken] : rows) {
    BareClient owner;
    xcb_window_t reader = 0;
    owner.fAsked = [&, &act = asked](const Request& request) {
      act(owner, request);
      reader = request.requestor;
    };
    owner.fTaken = [&, &act = taken](const auto& change) {
      if (act && change.window == reader) act(owner, reader, change.atom);
    };
    owner.Own();
    EXPECT_EQ(Read(&owner, {.silence = kSoon, .whole = 8 * kSoon}), heard) << why;
  }
  // Where the owner ended because another one came, that one is heard.
  BareClient ending;
  ending.fAsked = [&](const Request&) {
    StartWithText(Keeper(), "mine");
    ending.End();
  };
  ending.Own();
  EXPECT_EQ(Read(&ending), "mine");
  std::string text;
  BareClient mute;
  mute.Own();
  EXPECT_EQ(ReadX11Clipboard(text, [] { return false; }, {.silence = std::chrono::hours(1)}),
            ClipboardAnswer::kSilence)
      << "the run ends";
}

TEST_F(Clipboard, TheKeeperEndsWithItsTextAndWaitsForNobodyWhoIsGone) {
  // The second one is patient: there a reader's end must be noticed, not waited for.
  for (const milliseconds patience : {milliseconds(60), milliseconds(INT_MAX)}) {
    BareClient reader;
    BareClient after;
    bool kept = false;
    std::array<int, 2> held{-1, -1};
    ASSERT_EQ(::pipe(held.data()), 0);
    std::thread keeper([&] {
      kept = KeepX11Clipboard(
          LongText(5'000'000), [&] { ::close(held[1]); }, patience);
    });
    char nothing = 0;
    EXPECT_EQ(::read(held[0], &nothing, 1), 0);
    ::close(held[0]);
    reader.Ask("UTF8_STRING");
    EXPECT_TRUE(reader.TakePiece());
    after.Own();
    if (patience > std::chrono::hours(1)) reader.End();
    keeper.join();
    EXPECT_TRUE(kept);
  }
  ::setenv("DISPLAY", ":no", 1);
  EXPECT_FALSE(KeepX11Clipboard("text", [] {}));
  std::string text = "of before";
  EXPECT_EQ(ReadX11Clipboard(text, [] { return true; }), ClipboardAnswer::kElsewhere);
}

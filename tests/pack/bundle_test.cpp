// SPDX-License-Identifier: MIT
// The bundle as a whole: what is in it, what it replaces, what it leaves alone.
#include <random>

#include "Workshop.h"

namespace pack {
namespace {

class Bundle : public Workshop {
 protected:
  using List = std::vector<std::string>;
};

TEST_F(Bundle, HoldsTheRuntimeAndThePublishersPrograms) {
  Write("Checker.app/Contents/MacOS/Checker", "c");
  fs::create_symlink("Checker", root / "Checker.app/Contents/MacOS/Other");
  Write("finish.sh", "f");
  ASSERT_EQ("", Pack(Describe({{"windowTitle", "A < B & C"},
                               {"executeBefore", {{"file", "Checker.app/"}}},
                               {"executeAfter", {{"name", "Finish"}, {"file", "finish.sh"}}}})));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));
  EXPECT_EQ((List{"TessarineStub", "ditto"}), Names("out/Setup.app/Contents/MacOS"));
  EXPECT_EQ((List{"Checker.app", "Data", "Data2", "Finish", "TextData"}),
            Names("out/Setup.app/Contents/Resources"));
  EXPECT_NE(fs::perms::none, fs::status(root / "out/Setup.app/Contents/MacOS/TessarineStub").permissions() &
                                 fs::perms::owner_exec);
  EXPECT_TRUE(fs::is_symlink(root / "out/Setup.app/Contents/Resources/Checker.app/Contents/MacOS/Other"));
  EXPECT_EQ("Checker.app", Field(Unscrambled(Resource("Data")), "$|~", 8));
  EXPECT_EQ("Finish", Field(Unscrambled(Resource("Data")), "$|~", 3));
  const std::string plist = Read("out/Setup.app/Contents/Info.plist");
  EXPECT_NE(std::string::npos, plist.find("<string>A &lt; B &amp; C</string>"));
  EXPECT_NE(std::string::npos, plist.find("<string>TessarineStub</string>"));
}

TEST_F(Bundle, ReplacesABundleOfItsKindOnly) {
  Write("out/Setup.app/precious", "mine");
  EXPECT_NE("", Pack(Describe()));
  EXPECT_EQ("mine", Read("out/Setup.app/precious"));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));

  Write("out/Setup.app/Contents/MacOS/TessarineStub", "old");
  EXPECT_EQ("", Pack(Describe()));
  EXPECT_EQ((List{"Contents"}), Names("out/Setup.app"));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));

  const std::string before = Resource("TextData");
  EXPECT_NE("", Pack(Describe({{"message", "|#|"}})));
  EXPECT_EQ(before, Resource("TextData")) << "a refusal leaves the older bundle";

  fs::rename(root / "out/Setup.app", root / "elsewhere.app");
  fs::create_directory_symlink("../elsewhere.app", root / "out/Setup.app");
  EXPECT_NE("", Pack(Describe()));
  EXPECT_TRUE(fs::is_symlink(root / "out/Setup.app"));
}

TEST_F(Bundle, APayloadIsSplitAsOneScrambledStream) {
  // Incompressible, and longer than what is scrambled at once.
  std::minstd_rand random;
  std::string noise(2'500'001, '\0');
  for (char& c : noise) c = static_cast<char>(random() >> 8);
  Write("payload/noise", noise);
  ASSERT_EQ("", Pack(Describe()));
  const std::string whole = Resource("Data2");
  ASSERT_GT(whole.size(), noise.size());
  EXPECT_EQ("PK\x05\x06", Unscrambled(whole).substr(whole.size() - 22, 4));

  // An odd size, so that a piece begins at an odd position of the whole.
  ASSERT_EQ("", Pack(Describe({{"payload", {{"splitSizes", {1001, 500}}}}})));
  EXPECT_EQ((List{"Data#2", "Data#End", "Setup.app"}), Names("out"));
  EXPECT_EQ((List{"Data", "Data#1", "TextData"}), Names("out/Setup.app/Contents/Resources"));
  EXPECT_EQ(1001U, Resource("Data#1").size());
  EXPECT_EQ(500U, Read("out/Data#2").size());
  EXPECT_EQ(whole, Resource("Data#1") + Read("out/Data#2") + Read("out/Data#End"));

  // An older "Data#2" would be joined to a set of two.
  ASSERT_EQ("", Pack(Describe({{"payload", {{"splitSizes", {1001}}}}})));
  EXPECT_EQ((List{"Data#End", "Setup.app"}), Names("out"));
  ASSERT_EQ("", Pack(Describe()));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));
}

TEST_F(Bundle, PiecesOfAnotherSetAreLeftAlone) {
  Write("out/Data#2", "another's");
  EXPECT_NE("", Pack(Describe({{"payload", {{"splitSize", 100}}}})));
  EXPECT_EQ((List{"Data#2"}), Names("out"));
  EXPECT_EQ("", Pack(Describe()));
  EXPECT_EQ("another's", Read("out/Data#2"));
}

TEST_F(Bundle, AFailedMovePutsEverythingBack) {
  Write("a", "a");
  Write("b", "b");
  EXPECT_THROW(RenameAll({{root / "a", root / "a2"}, {root / "b", root / "b2"}, {root / "none", root / "x"}}),
               Refusal);
  EXPECT_EQ("a", Read("a"));
  EXPECT_EQ("b", Read("b"));
}

}  // namespace
}  // namespace pack

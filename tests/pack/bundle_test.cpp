// SPDX-License-Identifier: MIT
// The bundle as a whole: what is in it, what it replaces, what it leaves alone.
#include <random>

#include "Workshop.h"
#include "pack/Files.h"

namespace pack {

class Bundle : public Workshop {};

TEST_F(Bundle, HoldsTheRuntimeAndThePublishersPrograms) {
  Write("Checker.app/Contents/MacOS/Checker", "c", 0755);
  Link("Checker.app/Contents/MacOS/Other", "Checker");
  Write("finish.sh", "f", 0755);
  ASSERT_EQ("", Pack({{"windowTitle", "A < B & C"},
                      {"executeBefore", {{"file", "Checker.app/"}}},
                      {"executeAfter", {{"name", "Finish"}, {"file", "finish.sh"}}}}));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));
  auto contents = Look("out/Setup.app/Contents");
  EXPECT_EQ("file 755 the runtime", contents["MacOS/TessarineStub"]);
  EXPECT_TRUE(contents["MacOS/ditto"].ends_with("the expander"));
  EXPECT_EQ((List{"Checker.app", "Data", "Data2", "Finish", "TextData"}),
            Names("out/Setup.app/Contents/Resources"));
  EXPECT_EQ("link to Checker", contents["Resources/Checker.app/Contents/MacOS/Other"]);
  EXPECT_EQ("Checker.app", Field(Unscrambled(Resource("Data")), "$|~", 8));
  EXPECT_EQ("Finish", Field(Unscrambled(Resource("Data")), "$|~", 3));
  for (const char* text : {"<string>A &lt; B &amp; C</string>", "<string>TessarineStub</string>"})
    EXPECT_NE(std::string::npos, contents["Info.plist"].find(text));
}

TEST_F(Bundle, ReplacesABundleOfItsKindOnly) {
  Write("out/Setup.app/precious", "mine");
  EXPECT_NE("", Pack());
  EXPECT_EQ((Contents{{"Setup.app", "folder 755"}, {"Setup.app/precious", "file 644 mine"}}), Look("out"));

  Write("out/Setup.app/Contents/MacOS/TessarineStub", "old");
  EXPECT_EQ("", Pack());
  EXPECT_EQ((List{"Contents"}), Names("out/Setup.app"));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));

  const Contents before = Look("out");
  EXPECT_NE("", Pack({{"message", "|#|"}}));
  EXPECT_EQ(before, Look("out")) << "a refusal leaves the older bundle";

  fs::rename(Path("out/Setup.app"), Path("elsewhere.app"));
  Link("out/Setup.app", "../elsewhere.app");
  EXPECT_NE("", Pack());
  EXPECT_TRUE(fs::is_symlink(Path("out/Setup.app")));
}

TEST_F(Bundle, DoesNotGoIntoItself) {
  Write("out/x", "x");
  EXPECT_TRUE(Pack({{"payload", {{"folder", "out"}}}}).starts_with("payload.folder holds the bundle"));
  EXPECT_EQ((List{"x"}), Names("out"));
}

TEST_F(Bundle, APayloadIsSplitAsOneScrambledStream) {
  // Incompressible, and longer than what is scrambled at once.
  std::minstd_rand random;
  std::string noise(2'500'001, '\0');
  for (char& c : noise) c = static_cast<char>(random() >> 8);
  Write("payload/noise", noise);
  ASSERT_EQ("", Pack());
  const std::string whole = Resource("Data2");
  ASSERT_GT(whole.size(), noise.size());
  EXPECT_EQ("\xB1\xEA\x92\x8F", Unscrambled(whole).substr(whole.size() - 4));

  // An odd size, so that a piece begins at an odd position of the whole.
  ASSERT_EQ("", Pack({{"payload", {{"splitSizes", {1'000'001, 1'000'000}}}}}));
  EXPECT_EQ((List{"Data#2", "Data#End", "Setup.app"}), Names("out"));
  for (const char* neighbour : {"out/Data#2x", "out/Data#"}) Write(neighbour, "somebody's");
  EXPECT_EQ((List{"Data", "Data#1", "TextData"}), Names("out/Setup.app/Contents/Resources"));
  EXPECT_EQ(1'000'001U, Resource("Data#1").size());
  EXPECT_EQ(1'000'000U, Read("out/Data#2").size());
  EXPECT_EQ(whole, Resource("Data#1") + Read("out/Data#2") + Read("out/Data#End"));

  // An older "Data#2" would be joined to a set of two.
  ASSERT_EQ("", Pack({{"payload", {{"splitSizes", {1'000'001}}}}}));
  EXPECT_EQ((List{"Data#", "Data#2x", "Data#End", "Setup.app"}), Names("out"));
  for (const char* neighbour : {"out/Data#2x", "out/Data#"}) fs::remove(Path(neighbour));
  ASSERT_EQ("", Pack());
  EXPECT_EQ((List{"Setup.app"}), Names("out"));

  Write("out/Data#2", "of another set");
  EXPECT_NE("", Pack({{"payload", {{"splitSize", 1'000'000}}}}));
  EXPECT_EQ("", Pack());
  EXPECT_EQ((List{"Data#2", "Setup.app"}), Names("out"));
  EXPECT_EQ("of another set", Read("out/Data#2"));
}

TEST_F(Bundle, AFailedMovePutsEverythingBack) {
  Write("a", "a");
  Write("b", "b");
  EXPECT_THROW(RenameAll({{Path("a"), Path("a2")}, {Path("b"), Path("b2")}, {Path("none"), Path("x")}}),
               Refusal);
  EXPECT_EQ("ab", Read("a") + Read("b"));
}

}  // namespace pack

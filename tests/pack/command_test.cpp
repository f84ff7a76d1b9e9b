// SPDX-License-Identifier: MIT
// The program itself, started as a publisher starts it, and the demo's descriptions.
#include <sys/wait.h>

#include <cstdlib>

#include "Workshop.h"

namespace pack {

class Command : public Workshop {
 protected:
  // The exit status of a command line in the workshop; what it says goes into the file "said".
  int Run(const std::string& line) const {
    const int status = std::system(("cd '" + Path() + "' && " + line + " > said 2>&1").c_str());
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
  }
  const std::string program = std::string("'") + PACK_PROGRAM + "' ";
};

TEST_F(Command, StatusTellsWhatWentWrong) {
  Write("good.json", Describe().dump());
  Write("bad.json", Describe({{"colour", "red"}}).dump());
  fs::copy_file(PACK_PROGRAM, Path("runtime/tessarine-pack"));
  EXPECT_EQ(0, Run("runtime/tessarine-pack good.json out/Setup.app/"));
  EXPECT_EQ("", Read("said"));
  EXPECT_EQ("the expander", Read("out/Setup.app/Contents/MacOS/ditto"));
  EXPECT_EQ(1, Run(program + "--runtime runtime bad.json out/Bad.app"));
  EXPECT_EQ("bad.json:1:2: colour is no key of the description.\n", Read("said"));
  EXPECT_EQ(1, Run(program + "--check bad.json"));
  EXPECT_EQ("bad.json:1:2: colour is no key of the description.\n", Read("said"));
  EXPECT_EQ(0, Run(program + "--check good.json"));
  EXPECT_EQ("", Read("said"));
  EXPECT_EQ(1, Run(program + "--runtime out good.json out/Bad.app"));
  EXPECT_EQ(1, Run(program + "--runtime runtime good.json absent/Bad.app"));
  for (const char* arguments : {"good.json", "good.json out/a b", "--colour good.json out/Bad.app",
                                "good.json out/Bad.app --runtime", "good.json out/Bad", "--check"})
    EXPECT_EQ(2, Run(program + arguments)) << arguments;
  EXPECT_EQ((List{"Setup.app"}), Names("out"));
  EXPECT_EQ(0, Run(program + "--help"));
  EXPECT_TRUE(Read("said").starts_with("Usage: "));
}

TEST_F(Command, AFullDiskLeavesNothing) {
  Write("payload/noise", std::string(3'000'000, 'a'));
  Write("good.json", Describe({{"payload", {{"compression", "store"}}}}).dump());
  EXPECT_EQ(1, Run("(trap '' XFSZ; ulimit -f 1; " + program + "--runtime runtime good.json out/Setup.app)"));
  EXPECT_TRUE(fs::is_empty(Path("out")));
}

TEST_F(Command, TheDemoIsPacked) {
  fs::copy(DEMO_FOLDER, Path("demo"), fs::copy_options::recursive);
  Write("runtime/PostInstallCleanup", "the cleaner");
  for (const char* run : {"first", "replacing"})
    ASSERT_EQ(0, Run("demo/make-payload build/demo/payload")) << run << Read("said");
  for (const char* name : {"lantern", "lantern-applications"})
    EXPECT_EQ(0, Run(program + "--runtime runtime demo/" + name + ".json out/Setup.app")) << Read("said");
  for (const char* name : {"lantern-patch", "lantern-split"})
    EXPECT_EQ(0, Run(program + "--check demo/" + name + ".json")) << Read("said");
  EXPECT_EQ("More wicks,Option1.zip,Wicks,A flat and a round one", Field(Resource("TextData"), "|#|", 23));
}

}  // namespace pack

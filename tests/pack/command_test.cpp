// SPDX-License-Identifier: MIT
// The program itself, started as a publisher starts it, and the demo's descriptions.
#include <sys/wait.h>

#include <csignal>
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
  EXPECT_EQ("out/Setup.app: 1 MB, 1 file packed\n", Read("said"));
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
  EXPECT_EQ(2, Run(program + "--runtime runtime good.json out/a b.app"));
  EXPECT_TRUE(Read("said").starts_with("tessarine-pack: what is b.app?")) << Read("said");
  EXPECT_EQ((List{"Setup.app"}), Names("out"));
  for (const char* help : {"--help", "-h"}) {
    EXPECT_EQ(0, Run(program + help));
    EXPECT_TRUE(Read("said").starts_with("Usage: "));
  }
}

TEST_F(Command, ASignalLeavesNothingAndAKilledRunsRestGoes) {
  for (int i = 0; i < 40; ++i) Write("payload/" + std::to_string(i), std::string(2'000'000, 'a'));
  Write("good.json", Describe({{"payload", {{"level", "best"}}}}).dump());
  const std::string pack = program + "--runtime runtime good.json out/Setup.app";
  for (const int signal : {SIGINT, SIGTERM, SIGHUP, SIGKILL}) {
    // Once it has begun. The shell has what it starts beside itself ignore SIGINT.
    Write("stop.sh",
          "env --default-signal " + pack +
              " & for i in $(seq 500); do [ -e out/.Setup.app-*/bundle ] && break; sleep 0.01; done\n" +
              "kill -" + std::to_string(signal) + " $!; wait $!\n");
    EXPECT_EQ(128 + signal, Run("sh stop.sh")) << Read("said");
    EXPECT_EQ(signal == SIGKILL ? 1U : 0U, Names("out").size()) << signal;
    EXPECT_EQ(signal != SIGKILL, Read("said").find("nothing was made") != std::string::npos) << Read("said");
  }
  fs::remove_all(Path("payload"));
  Write("payload/a", "a");
  EXPECT_EQ(0, Run(pack));
  EXPECT_EQ((List{"Setup.app"}), Names("out"));
}

TEST_F(Command, TheSameContentMakesTheSameBytes) {
  Write("runtime/PostInstallCleanup", "the cleaner");
  Write("good.json", Describe({{"cleanup", {{"mode", "deleteInstaller"}}}}).dump());
  const std::string pack = "SOURCE_DATE_EPOCH=1500000000 " + program + "--runtime runtime good.json ";
  EXPECT_EQ(0, Run(pack + "out/A.app")) << Read("said");
  EXPECT_EQ(0,
            Run("touch payload runtime/PostInstallCleanup payload/*; TZ=Asia/Tokyo " + pack + "out/B.app"));
  EXPECT_EQ(0, Run("diff -r out/A.app/Contents/Resources out/B.app/Contents/Resources")) << Read("said");
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

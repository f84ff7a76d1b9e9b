// SPDX-License-Identifier: MIT
// The format as it is: two records made by hand, which are read and written. They change only if the format
// does.
#include <gtest/gtest.h>

#include <fstream>

#include "package/RecordWriter.h"
#include "support/TestPackage.h"

static std::string Golden(const std::string& name) {
  std::ifstream in(GOLDEN_FOLDER "/" + name + ".hex");
  std::string bytes;
  for (std::string line; std::getline(in, line);)
    for (std::istringstream digits(line.substr(0, line.find('#'))); digits >> line;)
      bytes += static_cast<char>(std::stoi(line, nullptr, 16));
  return bytes;
}

static InstallerRecord Lamp() {
  InstallerRecord r;
  r.fTimeStamp = "Mai \u201924";
  r.fApplicationFolder = r.fPromptToReplace = true;
  r.fExecuteAfterName = "Fertig.app";
  r.fLogoPixelStr = "0102030[6]";
  r.fLogoWidth = 2;
  r.fLogoHeight = 1;
  r.fExecuteBeforeName = "UserAccount/Pr\u00FCfer";
  r.fBackgroundPixelStr = "FF00FF";
  r.fBackgroundWidth = r.fBackgroundHeight = 1;
  r.fEncryptionLen = 255;
  r.fAgreement = "\u039D\u03B1\u03B9|";
  r.fMessage = "Gr\u00FC\u00DFe\nfrom Ky\u014Dto \u4EAC";
  r.fURLActual = "https://example.com/lamp";
  r.fURLDisplayed = "Lamp";
  r.fInfo = "One.\nTwo.";
  r.fLabels = {"", "Ende", "", "", "Gut"};
  r.fTargetFolder = "Lamp";
  r.fCopyright = "\u00A9 Maker";
  r.fWindowTitle = "Install Lamp";
  r.fInstallChoices = "Small,Choice1.zip,,|Big,Choice2.zip,Here,Much";
  r.fInstallOptions = "Web,http://x/y.zip,,";
  r.fMinOS = "MacOS10.12";
  r.fMinRAM = "2GB";
  r.fCompletionURL = "http://x";
  r.fPreInstallNotes = "<HTML>\u00E9";
  r.fPostCopy = "delete=/tmp/x|shell=ls; ls";
  r.fCleanup = 4;
  return r;
}

TEST(Golden, IsReadAndWritten) {
  const InstallerRecord read = ParseRecord(UnscrambledByHand(Golden("Data")), Golden("TextData"));
  EXPECT_TRUE(read == Lamp());
  const WrittenRecord written = WriteRecord(Lamp());
  EXPECT_EQ(ScrambledByHand(written.data), Golden("Data"));
  EXPECT_EQ(written.textData, Golden("TextData"));
  EXPECT_TRUE(written.faults.empty());
  EXPECT_EQ(read.LabelText(LabelId::Quit) + read.LabelText(LabelId::Ok), "EndeGut");
}

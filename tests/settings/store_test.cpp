#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

#include <filesystem>
#include <random>

#include "settings/ini_file.h"
#include "settings/pattern_slots.h"
#include "settings/settings_store.h"
#include "support/test_files.h"

namespace ledrix {
namespace {

using test::FileExists;
using test::Sjis;
using test::TempFolder;

TEST(SettingsStore, GivesBackEveryText) {
  const TempFolder folder;
  const std::string texts[] = {"",    " spaced ", "C:\\My Documents\\", "a=b]c", "line\r\nbreak",
                               "[x]", "\\n\\",    "表示 ﾃｽﾄ",           ";",     "\xFF\xFE"};
  const NativePath path = folder.At("new/folder/settings.ini");
  SettingsStore store(path);
  int number = 0;
  for (const std::string& text : texts)
    store.WriteSetting("Option", std::to_string(number++), text);
  store.WriteSetting("Option", "a=key", "1");
  store.WriteSetting("odd ] name", "k", "2");
  store.WriteSetting("", "root", "3");
  store.WriteSetting("Option", "[key", "4]");
  ASSERT_TRUE(store.Save().ok());

  struct stat status {};
  ASSERT_EQ(stat(folder.At("new").c_str(), &status), 0);
  EXPECT_EQ(status.st_mode & 0077, 0u);  // settings are nobody else's

  SettingsStore read(path);
  ASSERT_TRUE(read.Load().ok());
  number = 0;
  for (const std::string& text : texts) {
    EXPECT_EQ(read.ReadSetting("Option", std::to_string(number++), "default"), text);
  }
  EXPECT_EQ(read.ReadSetting("Option", "a=key", ""), "1");
  EXPECT_EQ(read.ReadSetting("odd ] name", "k", ""), "2");
  EXPECT_EQ(read.ReadSetting("", "root", ""), "3");
  EXPECT_EQ(read.ReadSetting("Option", "[key", ""), "4]");
  EXPECT_EQ(read.ReadSetting("Option", "missing", "default"), "default");
  EXPECT_EQ(read.ReadSetting("Missing", "0", "default"), "default");

  store.WriteSetting("Option", "nul", std::string("ab\0cd", 5));
  EXPECT_EQ(store.ReadSetting("Option", "nul", ""), "ab");
  store.ClearSettingKey("Option");
  EXPECT_EQ(store.ReadSetting("Option", "1", "gone"), "gone");
  EXPECT_EQ(store.ReadSetting("", "root", "gone"), "3");
  store.ClearSettingKey("");
  ASSERT_TRUE(store.Save().ok());
  EXPECT_EQ(test::ReadFile(path), "");
}

TEST(SettingsStore, NonsenseIsPassedOver) {
  const TempFolder folder;
  using namespace std::string_literals;
  std::string noise =
      "\xEF\xBB\xBF[Settings]\nVerDisp=1\n\0\x01[\n]=\n=x\n[Option\nOptMatch 7\n\n[Option]\nOptMatch=7\nOptMatch=8\n"s;
  std::mt19937 random(3);
  for (int i = 0; i < 100000; ++i) noise += static_cast<char>(random());
  std::string nines;
  nines.resize(10'000'000, '9');
  noise += "\n[Option]\nOptBuff=" + nines + "\nOptLstout=\nPrintCompLen=80 (A4)";
  SettingsStore store(folder.Write("settings.ini", noise));
  ASSERT_TRUE(store.Load().ok());
  OptionRecord options;
  LoadOptions(store, options);
  EXPECT_EQ(options.OptMatch, 8);
  EXPECT_EQ(options.OptBuff, 32767);
  EXPECT_EQ(options.VerDisp, 1);    // behind a byte order mark
  EXPECT_EQ(options.OptLstout, 0);  // empty is not missing
  EXPECT_EQ(options.PrintCompLen, 80);
  EXPECT_EQ(options.OptTABtoKETA, 8);
}

TEST(SettingsStore, ALinkedFileStaysALink) {
  const TempFolder folder;
  folder.Write("real.ini", "");
  ASSERT_EQ(symlink("real.ini", folder.At("settings.ini").c_str()), 0);
  SettingsStore store(folder.At("settings.ini"));
  store.WriteSetting("Option", "k", "v");
  ASSERT_TRUE(store.Save().ok());
  EXPECT_TRUE(std::filesystem::is_symlink(folder.At("settings.ini").bytes()));
  EXPECT_EQ(test::ReadFile(folder.At("real.ini")), "[Option]\nk=v\n");
}

TEST(Options, AreSavedAndLoadedUnderTheirKeys) {
  const TempFolder folder;
  OptionRecord options;
  options.OptMatch = -5;
  options.VerDisp = 1;
  options.Charset = " A  B ";
  options.FPattern[2] = "*.x;*.y";
  SettingsStore store(folder.At("s"));
  SaveOptions(options, {"/old/", "/new/"}, store);
  ASSERT_TRUE(store.Save().ok());

  const std::string file = test::ReadFile(folder.At("s"));
  EXPECT_EQ(file.find("[Option]\nOptSTCol=1\nOptEDCol=9999\nOptMatch=-5\n"), 0u);
  EXPECT_NE(file.find("EndPath=1\nEndPathOld=/old/\nEndPathNew=/new/\nStartMsg=1\n"),
            std::string::npos);
  EXPECT_NE(file.find("Charset=A  B\nCharsetCode=\n"), std::string::npos);
  EXPECT_EQ(file.find("VerDisp"), std::string::npos);

  SettingsStore read(folder.At("s"));
  ASSERT_TRUE(read.Load().ok());
  OptionRecord loaded;
  LoadOptions(read, loaded);
  EXPECT_EQ(loaded.OptMatch, -5);
  EXPECT_EQ(loaded.VerDisp, 0);
  EXPECT_EQ(loaded.FPattern[2], "*.x;*.y");
  EXPECT_EQ(CharsetList(loaded), (std::vector<std::string>{"A", "", "B"}));
  read.WriteSetting("Option", "VerDisp", "1");
  LoadOptions(read, loaded);
  EXPECT_EQ(loaded.VerDisp, 0);
  read.WriteSetting("Settings", "VerDisp", "1");
  LoadOptions(read, loaded);
  EXPECT_EQ(loaded.VerDisp, 1);
}

TEST(IniFile, ReadsWhatExistingFilesHold) {
  const TempFolder folder;
  clsIniFile file;
  file.pFileName(folder.Write(
      "p.ini",
      Sjis("; comment\r\nstray\r\n[pattern]\r\n Name = ﾊﾟﾀｰﾝ表 \r\nQuoted=\" a \"\r\nHalf=\"a'\r\n"
           "Empty=\r\nNumber=12x\r\nBig=99999\r\nWord=abc\r\nName=second\r\n"
           "[OPTION]\nOptMatch=8\n[Pattern]\r\nLate=1\r\n") +
          "Long=" + std::string(300, 'x')));
  for (const auto& row : test::ReadTable("ini_values.tsv")) {
    EXPECT_EQ(file.mGetString(row[0], row[1], "default"), row[2]) << row[0] << " " << row[1];
  }
  EXPECT_EQ(file.mGetInteger("Pattern", "Number"), 12);
  EXPECT_EQ(file.mGetInteger("Pattern", "Big"), 32767);
  EXPECT_EQ(file.mGetInteger("Pattern", "Word", 5), 0);
  EXPECT_EQ(file.mGetInteger("Pattern", "None", 5), 5);

  clsIniFile longer;
  longer.pFileName(folder.Write("l.ini", "[a]\nLong=" + std::string(300, 'x')));
  EXPECT_EQ(longer.mGetString("a", "Long"), std::string(255, 'x'));
}

TEST(IniFile, WritesOneValueAndKeepsTheRest) {
  const TempFolder folder;
  clsIniFile file;
  file.pFileName(folder.Write(
      "p.ini", "; note\r\n[Pattern]\r\nName=a\r\n\r\n[Empty]\r\n[Option]\r\nOther=1\r\n"));
  EXPECT_TRUE(file.mSetString("Empty", "k", "v"));
  EXPECT_TRUE(file.mSetString("Pattern", "NAME", "ｶﾅ 表"));
  EXPECT_TRUE(file.mSetString("Pattern", "More", " x "));
  EXPECT_TRUE(file.mSetString("New", "Key", "two\r\nlines"));
  EXPECT_EQ(test::ReadFile(file.pFileName()),
            Sjis("; note\r\n[Pattern]\r\nNAME=ｶﾅ 表\r\nMore=\" x "
                 "\"\r\n\r\n[Empty]\r\nk=v\r\n[Option]\r\nOther=1\r\n"
                 "[New]\r\nKey=two  lines\r\n"));
  EXPECT_EQ(file.mGetString("Pattern", "More"), " x ");
  file.pFileName(NativePath("/dev/null/p.ini"));
  EXPECT_FALSE(file.mSetString("a", "b", "c"));
  EXPECT_EQ(clsIniFile().pFileName().bytes(), "");
}

TEST(PatternSlots, SaveLoadApplyAndDelete) {
  const TempFolder folder;
  const NativePath program_folder(folder.path() + "/");
  PatternSlots slots(program_folder);
  PatternSlot night{"  夜間😀  ", {}};
  night.values.OptMatch = 7;
  night.values.ComboLstLst = "*.LST";
  night.values.CsvStatus = 0;  // belongs to no pattern
  ASSERT_TRUE(slots.SavePattern(1, night).ok());
  EXPECT_EQ(slots[1].name, "夜間?");  // as the file will give it back
  ASSERT_TRUE(FileExists(folder.At("LedrixPtn2.ini")));
  EXPECT_EQ(test::ReadLines(folder.At("LedrixPtn2.ini")).size(), 2u + 1 + 17);

  PatternSlots read(program_folder);
  for (size_t n = 0; n < kPatternSlots; ++n) ASSERT_TRUE(read.LoadPattern(n).ok());
  EXPECT_EQ(read[0].name, "");
  EXPECT_EQ(read[1].name, "夜間?");
  OptionRecord options;
  options.OptNoCngNoOut = 0;
  read.ApplyPattern(1, options);
  EXPECT_EQ(options.OptMatch, 7);
  EXPECT_EQ(options.ComboLstLst, "*.LST");
  EXPECT_EQ(options.CsvStatus, 1);
  EXPECT_EQ(options.OptNoCngNoOut, 0);

  folder.Write("LedrixPtn3.ini", "[Option]\r\nOptMatch=3\r\n");  // no name: an empty slot
  ASSERT_TRUE(read.LoadPattern(2).ok());
  EXPECT_EQ(read[2].name, "");
  folder.Write("LedrixPtn1.ini",
               Sjis("[Pattern]\r\nName=x\r\n[Option]\r\nOptSTCol=\r\nOptBuff=\x01\xFF"));
  ASSERT_TRUE(read.LoadPattern(0).ok());
  EXPECT_EQ(read[0].values.OptSTCol, 1);
  EXPECT_EQ(read[0].values.OptBuff, 0);

  EXPECT_TRUE(slots.SavePattern(1, {"  ", {}}).ok());
  EXPECT_FALSE(FileExists(folder.At("LedrixPtn2.ini")));
  EXPECT_TRUE(slots.DeletePattern(1).ok());
  EXPECT_EQ(slots[1].name, "");
}

}  // namespace
}  // namespace ledrix

// The keys of the options, by which the program names them: one that is misspelt does not compile.
#pragma once

#include <array>
#include <cstddef>
#include <string_view>

namespace ledrix {

// In the order in which the store reads and writes the options.
inline constexpr std::string_view kOptionKeys[] = {
    "OptSTCol",       "OptEDCol",       "OptMatch",      "OptBuff",       "OptSpData",
    "OptTABtoSPACE",  "OptTABtoKETA",   "OptUpperCase",  "ComboLstLst",   "OptLstout",
    "OptOutLineCnt",  "PrintCompLen",   "LineNoAdd",     "OptOutLineVar", "NoCompList",
    "NTypeNextLine",  "OptSimple",      "OptNoCngNoOut", "NoPattern",     "ContOutDir",
    "ContOutDirPath", "ComboLstSbn",    "ComboCSVName",  "CsvStatus",     "MergeOld",
    "ComboDLst",      "PrintDCompLen",  "DCompOut0",     "DCompOut1",     "DCompOut2",
    "DCompSelect",    "DComp1s",        "DComp9h",       "DCompKana",     "DCompBinary",
    "ComboStp",       "EndPath",        "StartMsg",      "OptDbClick",    "FPatternTtl0",
    "FPattern0",      "FPatternTtl1",   "FPattern1",     "FPatternTtl2",  "FPattern2",
    "SendToLDX",      "DELMenuVisible", "DirBoxSClick",  "DirBoxSynchro", "FontName",
    "FontSize",       "OutListClear",   "Charset",       "CharsetCode",   "VerDisp",
};
inline constexpr size_t kOptionCount = std::size(kOptionKeys);

class OptionKey {
 public:
  // Takes a literal that is one of the keys; any other does not compile. FindOptionField looks up
  // what a user has typed.
  consteval OptionKey(const char* key)  // NOLINT(google-explicit-constructor)
      : index_(IndexOf(key)) {}

  constexpr std::string_view text() const { return kOptionKeys[index_]; }
  // The key's place in kOptionKeys, from 0.
  constexpr size_t index() const { return index_; }

  friend constexpr bool operator==(OptionKey, OptionKey) = default;

 private:
  static consteval size_t IndexOf(std::string_view key) {
    for (size_t i = 0; i < kOptionCount; ++i) {
      if (kOptionKeys[i] == key) return i;
    }
    throw "there is no option of this key";
  }

  size_t index_;
};

// Titles and name patterns of the user file types.
inline constexpr size_t kUserFileTypes = 3;
inline constexpr std::array<OptionKey, kUserFileTypes> kTitleKeys = {"FPatternTtl0", "FPatternTtl1",
                                                                     "FPatternTtl2"};
inline constexpr std::array<OptionKey, kUserFileTypes> kPatternKeys = {"FPattern0", "FPattern1",
                                                                       "FPattern2"};

}  // namespace ledrix

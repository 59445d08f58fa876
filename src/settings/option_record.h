// The one record of every user option, each field named by the key that stores it.
//
// Every part of the program reads the fields at the moment it needs them; nothing here checks a
// value. The engines read through views that clamp what is stored (compare_options.h).
#pragma once

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "settings/option_key.h"

namespace ledrix {

struct OptionRecord {
  // All defaults.
  OptionRecord();

  // Text compare: conditions. Columns are bytes counted from 1.
  int16_t OptSTCol{};       // first column compared
  int16_t OptEDCol{};       // last column compared
  int16_t OptMatch{};       // equal lines that count as being back in step
  int16_t OptBuff{};        // lines that the search looks ahead, the current one included
  int16_t OptSpData{};      // 0 compare spaces, 1 ignore trailing ones, 2 ignore all
  int16_t OptTABtoSPACE{};  // expand tabs before comparing
  int16_t OptTABtoKETA{};   // tab width in columns
  int16_t OptUpperCase{};   // 1 upper and lower case differ

  // Text compare: output format.
  std::string ComboLstLst;  // name pattern of the listing
  int16_t OptLstout{};      // unchanged lines shown before and after a block
  int16_t OptOutLineCnt{};  // show every line
  int16_t PrintCompLen{};   // width of one side of the listing in columns
  int16_t LineNoAdd{};      // line numbers in the listing
  int16_t OptOutLineVar{};  // vertical layout
  int16_t NoCompList{};     // leave no listing of a pair without differences
  int16_t NTypeNextLine{};  // wrap long lines and keep double-byte characters whole
  int16_t OptSimple{};      // half-width marks and frames only

  // Text compare: supplement.
  int16_t OptNoCngNoOut{};  // skip a pair of equal time and size
  std::string NoPattern;    // name patterns that a multiple compare leaves out
  int16_t ContOutDir{};     // outputs always go to ContOutDirPath
  std::string ContOutDirPath;

  // Simultaneous outputs.
  std::string ComboLstSbn;   // name pattern of the difference file
  std::string ComboCSVName;  // file name of the CSV summary
  int16_t CsvStatus{};       // pairs with a status get a CSV row too
  int16_t MergeOld{};        // the merge source prefers the old line

  // Directory compare.
  std::string ComboDLst;              // name pattern of directory information files
  int16_t PrintDCompLen{};            // width of its listing in columns
  std::array<int16_t, 3> DCompOut{};  // details of added, deleted, changed entries
  int16_t DCompSelect{};              // only names that match the old side's filter
  int16_t DComp1s{};                  // one second is no difference
  int16_t DComp9h{};                  // nine hours are no difference
  int16_t DCompKana{};                // tell half-width and full-width forms apart
  int16_t DCompBinary{};              // tell upper and lower case apart

  // Other functions.
  std::string ComboStp;  // name pattern of the step count listing

  // Screen.
  int16_t EndPath{};                       // reopen the folders of the last run
  int16_t StartMsg{};                      // ask before a job starts
  int16_t OptDbClick{};                    // double click: 0 opens the file, 1 selects its namesake
  int16_t SendToLDX{};                     // send-to uses the program's own folder
  int16_t DELMenuVisible{};                // 1 hides the delete command
  int16_t DirBoxSClick{};                  // a single click opens a folder
  int16_t DirBoxSynchro{};                 // the two folder boxes follow each other
  int16_t OutListClear{};                  // empty the result list before every job
  int16_t VerDisp{};                       // no version window at start
  std::array<std::string, 3> FPatternTtl;  // user file types: titles
  std::array<std::string, 3> FPattern;     // user file types: name patterns
  std::string FontName;
  int16_t FontSize{};  // points

  // Character code.
  std::string Charset;      // charset names of the menu, separated by single spaces
  std::string CharsetCode;  // the chosen one; empty means no conversion
};

// What a stored flag means to every reader: the nearer one of 0 and 1.
inline bool IsOn(int16_t flag) {
  return flag >= 1;
}

enum class OptionKind { kFlag, kChoice, kInteger, kText };

// What is known of one field: its key, the store's section, its default and, for numbers, its
// valid range. Exactly one of `number` and `text` is set.
struct OptionField {
  OptionKey key;
  std::string_view section;
  OptionKind kind;
  std::string_view default_text;
  int16_t lowest;
  int16_t highest;
  int16_t& (*number)(OptionRecord&);
  std::string& (*text)(OptionRecord&);

  // The field's value as the store keeps it: decimal digits, or the text itself.
  std::string Get(const OptionRecord& record) const;
  // The same with a number clamped to its valid range: what is stored means that to every reader.
  std::string GetClamped(const OptionRecord& record) const;
  // Stores a value as it stands in the store; a number by its leading number.
  void Set(OptionRecord& record, std::string_view value) const;
};

// Every field, in the order in which the store reads and writes them; VerDisp, which lives in a
// section of its own, comes last.
std::span<const OptionField> OptionFields();

const OptionField& FieldOf(OptionKey key);

// The field of a key that was typed (exact spelling), or nullptr.
const OptionField* FindOptionField(std::string_view key);

}  // namespace ledrix

#include "settings/option_record.h"

#include <algorithm>
#include <limits>

#include "text/leading_number.h"

namespace ledrix {
namespace {

constexpr std::string_view kOption = "Option";
constexpr std::string_view kSettings = "Settings";
constexpr int16_t kNoLimit = std::numeric_limits<int16_t>::max();

template <auto Member>
int16_t& Number(OptionRecord& record) {
  return record.*Member;
}

template <auto Member, size_t Index>
int16_t& NumberAt(OptionRecord& record) {
  return (record.*Member)[Index];
}

template <auto Member>
std::string& Text(OptionRecord& record) {
  return record.*Member;
}

template <auto Member, size_t Index>
std::string& TextAt(OptionRecord& record) {
  return (record.*Member)[Index];
}

using Record = OptionRecord;
using NumberAccess = int16_t& (*)(OptionRecord&);
using TextAccess = std::string& (*)(OptionRecord&);

constexpr OptionField Flag(OptionKey key, std::string_view def, NumberAccess access,
                           std::string_view section = kOption) {
  return {key, section, OptionKind::kFlag, def, 0, 1, access, nullptr};
}

constexpr OptionField Choice(OptionKey key, std::string_view def, int16_t last,
                             NumberAccess access) {
  return {key, kOption, OptionKind::kChoice, def, 0, last, access, nullptr};
}

constexpr OptionField Integer(OptionKey key, std::string_view def, int16_t lowest, int16_t highest,
                              NumberAccess access) {
  return {key, kOption, OptionKind::kInteger, def, lowest, highest, access, nullptr};
}

constexpr OptionField Words(OptionKey key, std::string_view def, TextAccess access) {
  return {key, kOption, OptionKind::kText, def, 0, 0, nullptr, access};
}

constexpr OptionField kFields[] = {
    Integer("OptSTCol", "1", 1, 9999, Number<&Record::OptSTCol>),
    Integer("OptEDCol", "9999", 1, 9999, Number<&Record::OptEDCol>),
    Integer("OptMatch", "5", 1, 99, Number<&Record::OptMatch>),
    Integer("OptBuff", "1000", 1, 4000, Number<&Record::OptBuff>),
    Choice("OptSpData", "1", 2, Number<&Record::OptSpData>),
    Flag("OptTABtoSPACE", "0", Number<&Record::OptTABtoSPACE>),
    Integer("OptTABtoKETA", "8", 1, 16, Number<&Record::OptTABtoKETA>),
    Flag("OptUpperCase", "1", Number<&Record::OptUpperCase>),
    Words("ComboLstLst", "*_COMP.TXT", Text<&Record::ComboLstLst>),
    Integer("OptLstout", "10", 1, 99, Number<&Record::OptLstout>),
    Flag("OptOutLineCnt", "0", Number<&Record::OptOutLineCnt>),
    Integer("PrintCompLen", "90", 70, 300, Number<&Record::PrintCompLen>),
    Flag("LineNoAdd", "0", Number<&Record::LineNoAdd>),
    Flag("OptOutLineVar", "0", Number<&Record::OptOutLineVar>),
    Flag("NoCompList", "0", Number<&Record::NoCompList>),
    Flag("NTypeNextLine", "1", Number<&Record::NTypeNextLine>),
    Flag("OptSimple", "0", Number<&Record::OptSimple>),
    Flag("OptNoCngNoOut", "1", Number<&Record::OptNoCngNoOut>),
    Words("NoPattern", "*.exe;*.bin;*.lib;*.frx;*.res;*.ocx;*.oca;*.bmp;*.jpg;*.gif;*_COMP.txt",
          Text<&Record::NoPattern>),
    Flag("ContOutDir", "0", Number<&Record::ContOutDir>),
    Words("ContOutDirPath", "C:\\My Documents", Text<&Record::ContOutDirPath>),
    Words("ComboLstSbn", "*_SBN.TXT", Text<&Record::ComboLstSbn>),
    Words("ComboCSVName", "Ledrix.CSV", Text<&Record::ComboCSVName>),
    Flag("CsvStatus", "1", Number<&Record::CsvStatus>),
    Flag("MergeOld", "0", Number<&Record::MergeOld>),
    Words("ComboDLst", "*.ddf", Text<&Record::ComboDLst>),
    Integer("PrintDCompLen", "120", 70, 300, Number<&Record::PrintDCompLen>),
    Flag("DCompOut0", "1", NumberAt<&Record::DCompOut, 0>),
    Flag("DCompOut1", "1", NumberAt<&Record::DCompOut, 1>),
    Flag("DCompOut2", "1", NumberAt<&Record::DCompOut, 2>),
    Flag("DCompSelect", "0", Number<&Record::DCompSelect>),
    Flag("DComp1s", "0", Number<&Record::DComp1s>),
    Flag("DComp9h", "0", Number<&Record::DComp9h>),
    Flag("DCompKana", "1", Number<&Record::DCompKana>),
    Flag("DCompBinary", "0", Number<&Record::DCompBinary>),
    Words("ComboStp", "*_STP.TXT", Text<&Record::ComboStp>),
    Flag("EndPath", "1", Number<&Record::EndPath>),
    Flag("StartMsg", "1", Number<&Record::StartMsg>),
    Choice("OptDbClick", "0", 1, Number<&Record::OptDbClick>),
    Words("FPatternTtl0", "CBLｿｰｽ", TextAt<&Record::FPatternTtl, 0>),
    Words("FPattern0", "*.CBL;*.COB", TextAt<&Record::FPattern, 0>),
    Words("FPatternTtl1", "VBｿｰｽ", TextAt<&Record::FPatternTtl, 1>),
    Words("FPattern1", "*.Frm;*.Bas;*.Cls;*.ctl;*.pag", TextAt<&Record::FPattern, 1>),
    Words("FPatternTtl2", "", TextAt<&Record::FPatternTtl, 2>),
    Words("FPattern2", "", TextAt<&Record::FPattern, 2>),
    Flag("SendToLDX", "0", Number<&Record::SendToLDX>),
    Flag("DELMenuVisible", "1", Number<&Record::DELMenuVisible>),
    Flag("DirBoxSClick", "1", Number<&Record::DirBoxSClick>),
    Flag("DirBoxSynchro", "1", Number<&Record::DirBoxSynchro>),
    Words("FontName", "ＭＳ Ｐゴシック", Text<&Record::FontName>),
    Integer("FontSize", "9", 1, kNoLimit, Number<&Record::FontSize>),
    Flag("OutListClear", "0", Number<&Record::OutListClear>),
    Words("Charset", "_autodetect Shift_JIS EUC-JP ISO-2022-JP UTF-8 UNICODE",
          Text<&Record::Charset>),
    Words("CharsetCode", "", Text<&Record::CharsetCode>),
    Flag("VerDisp", "0", Number<&Record::VerDisp>, kSettings),
};

constexpr bool EveryKeyHasItsField() {
  for (size_t i = 0; i < std::size(kFields); ++i) {
    if (kFields[i].key.index() != i) return false;
  }
  return std::size(kFields) == kOptionCount;
}
static_assert(EveryKeyHasItsField());

}  // namespace

OptionRecord::OptionRecord() {
  for (const OptionField& field : kFields) field.Set(*this, field.default_text);
}

std::string OptionField::Get(const OptionRecord& record) const {
  // The accessors only name the field; nothing is written through them, here and below.
  auto& fields = const_cast<OptionRecord&>(record);
  return number != nullptr ? std::to_string(number(fields)) : text(fields);
}

std::string OptionField::GetClamped(const OptionRecord& record) const {
  if (number == nullptr) return Get(record);
  return std::to_string(std::clamp(number(const_cast<OptionRecord&>(record)), lowest, highest));
}

void OptionField::Set(OptionRecord& record, std::string_view value) const {
  if (number != nullptr) {
    number(record) = LeadingInteger(value);
  } else {
    text(record) = value;
  }
}

std::span<const OptionField> OptionFields() {
  return kFields;
}

const OptionField& FieldOf(OptionKey key) {
  return kFields[key.index()];
}

const OptionField* FindOptionField(std::string_view key) {
  const auto fields = OptionFields();
  const auto found = std::find_if(fields.begin(), fields.end(), [key](const OptionField& field) {
    return field.key.text() == key;
  });
  return found == fields.end() ? nullptr : &*found;
}

}  // namespace ledrix

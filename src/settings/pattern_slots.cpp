#include "settings/pattern_slots.h"

#include "platform/files.h"
#include "settings/ini_file.h"
#include "settings/option_draft.h"
#include "text/ascii.h"
#include "text/code_page_932.h"

namespace ledrix {

std::span<const std::string_view> PatternKeys() {
  static constexpr std::string_view kKeys[] = {
      "OptSTCol",      "OptEDCol",     "OptMatch",     "OptBuff",       "OptSpData",
      "OptTABtoSPACE", "OptTABtoKETA", "OptUpperCase", "ComboLstLst",   "OptLstout",
      "OptOutLineCnt", "PrintCompLen", "LineNoAdd",    "OptOutLineVar", "NoCompList",
      "NTypeNextLine", "OptSimple"};
  return kKeys;
}

NativePath PatternSlots::FileOf(size_t n) const {
  return folder_ + ("LedrixPtn" + std::to_string(n + 1) + ".ini");
}

void PatternSlots::LoadPattern(size_t n) {
  clsIniFile file;
  file.pFileName(FileOf(n));
  PatternSlot& slot = slots_[n];
  slot.name = file.mGetString("Pattern", "Name");
  if (slot.name.empty()) return;
  for (const std::string_view key : PatternKeys()) {
    const OptionField& field = *FindOptionField(key);
    field.Set(slot.values, file.mGetString("Option", key, field.default_text));
  }
}

void PatternSlots::SavePattern(size_t n) {
  PatternSlot& slot = slots_[n];
  slot.name = DecodeSjis(EncodeSjis(Trimmed(slot.name)));  // as the file will give it back
  if (slot.name.empty()) {
    RemoveFile(FileOf(n)).Ignore();
    return;
  }
  clsIniFile file;
  file.pFileName(FileOf(n));
  file.mSetString("Pattern", "Name", slot.name);
  for (const std::string_view key : PatternKeys()) {
    file.mSetString("Option", key, FindOptionField(key)->Get(slot.values));
  }
}

void PatternSlots::DeletePattern(size_t n) {
  RemoveFile(FileOf(n)).Ignore();
  slots_[n].name.clear();
}

void PatternSlots::ApplyPattern(size_t n, OptionRecord& options) const {
  for (const std::string_view key : PatternKeys()) {
    const OptionField& field = *FindOptionField(key);
    field.Set(options, field.Get(slots_[n].values));
  }
}

}  // namespace ledrix

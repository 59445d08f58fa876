#include "settings/pattern_slots.h"

#include <vector>

#include "platform/files.h"
#include "platform/replacement.h"
#include "settings/ini_file.h"
#include "settings/option_draft.h"
#include "text/ascii.h"

namespace ledrix {

std::span<const OptionKey> PatternKeys() {
  static constexpr OptionKey kKeys[] = {
      "OptSTCol",      "OptEDCol",     "OptMatch",     "OptBuff",       "OptSpData",
      "OptTABtoSPACE", "OptTABtoKETA", "OptUpperCase", "ComboLstLst",   "OptLstout",
      "OptOutLineCnt", "PrintCompLen", "LineNoAdd",    "OptOutLineVar", "NoCompList",
      "NTypeNextLine", "OptSimple"};
  return kKeys;
}

NativePath PatternSlots::FileOf(size_t n) const {
  return folder_ + ("LedrixPtn" + std::to_string(n + 1) + ".ini");
}

Status PatternSlots::LoadPattern(size_t n) {
  RemoveOldReplacements(FileOf(n));
  std::vector<IniValue> values = {{"Pattern", "Name", {}}};
  for (const OptionKey key : PatternKeys()) {
    values.push_back({"Option", key.text(), std::string(FieldOf(key).default_text)});
  }
  clsIniFile file;
  file.pFileName(FileOf(n));
  if (const Status unread = file.GetAll(values); !unread.ok()) return unread;
  PatternSlot& slot = slots_[n];
  slot.name = values[0].text;
  if (slot.name.empty()) return Status();
  for (size_t i = 0; i < PatternKeys().size(); ++i) {
    FieldOf(PatternKeys()[i]).Set(slot.values, values[i + 1].text);
  }
  return Status();
}

Status PatternSlots::SavePattern(size_t n, PatternSlot slot) {
  slot.name = std::string(Trimmed(slot.name));
  if (slot.name.empty()) return DeletePattern(n);
  std::vector<IniValue> values = {{"Pattern", "Name", slot.name}};
  for (const OptionKey key : PatternKeys()) {
    values.push_back({"Option", key.text(), FieldOf(key).Get(slot.values)});
  }
  clsIniFile file;
  file.pFileName(FileOf(n));
  const Status failed = file.SetAll(values);
  if (!failed.ok()) return failed;
  slot.name = file.mGetString("Pattern", "Name", slot.name);  // as the next run will read it
  slots_[n] = std::move(slot);
  return failed;
}

Status PatternSlots::DeletePattern(size_t n) {
  const Status failed = RemoveFile(FileOf(n));
  if (failed.ok()) slots_[n].name.clear();
  return failed;
}

void PatternSlots::ApplyPattern(size_t n, OptionRecord& options) const {
  for (const OptionKey key : PatternKeys()) {
    const OptionField& field = FieldOf(key);
    field.Set(options, field.Get(slots_[n].values));
  }
}

}  // namespace ledrix

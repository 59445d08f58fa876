// The files in which settings are kept: the store, INI files, patterns.
#include <algorithm>

#include "settings/compare_options.h"
#include "settings/ini_file.h"
#include "settings/option_draft.h"
#include "settings/pattern_slots.h"
#include "settings/settings_store.h"
#include "support.h"
#include "targets.h"
#include "text/ascii.h"
#include "text/code_page_932.h"

namespace ledrix::fuzz {
namespace {

// Every option as its text.
std::vector<std::string> TextsOf(const OptionRecord& record) {
  std::vector<std::string> texts;
  for (const OptionField& field : OptionFields()) texts.push_back(field.Get(record));
  return texts;
}

// What the options dialog and --set do with a record.
void CheckDraft(const OptionRecord& record, std::string_view typed) {
  OptionDraft draft(record);
  const OptionField& typed_field = OptionFields()[typed.size() % kOptionCount];
  if (draft.Set(typed_field.key.text(), typed) || draft.Check()) return;
  OptionRecord accepted;
  draft.Accept(accepted);
  for (const OptionField& field : OptionFields()) {
    Require(field.Get(accepted) == field.GetClamped(accepted), "what is accepted is in range");
  }
}

}  // namespace

void SettingsTarget(std::string_view bytes) {
  const NativePath path = WorkFolder() + "settings.ini";
  Input input(bytes);
  const bool saves_options = input.Flag();
  const std::string section(input.Piece());
  const std::string key = "k" + std::string(input.Piece());
  const std::string text(input.Piece());
  WriteFile(path, input.Rest());
  SettingsStore store(path);
  Require(store.Load().ok(), "any bytes are settings");
  OptionRecord record;
  LoadOptions(store, record);
  CheckDraft(record, text);
  record.Charset = Trimmed(record.Charset);
  if (saves_options) SaveOptions(record, {text, text}, store);
  store.WriteSetting(section, key, text);
  Require(store.Save().ok(), "settings can be saved");
  const std::string saved = ReadFile(path);
  SettingsStore again(path);
  OptionRecord read_again;
  Require(again.Load().ok(), "saved settings can be read");
  Require(again.ReadSetting(section, key, "-") == text.substr(0, text.find('\0')),
          "a setting is read as it was written");
  LoadOptions(again, read_again);
  read_again.Charset = Trimmed(read_again.Charset);
  if (section.empty()) Require(again.Save().ok() && ReadFile(path) == saved, "twice is once");
  Require(TextsOf(read_again) == TextsOf(record), "saved settings are the settings");
}

void IniTarget(std::string_view bytes) {
  Input input(bytes);
  const std::string value(input.Piece());
  const NativePath path = WorkFolder() + "file.ini";
  WriteFile(path, input.Rest());
  clsIniFile file;
  file.pFileName(path);
  Require(file.GetAll({}).ok(), "any bytes are an INI file");
  const std::string other = file.mGetString("Other", "key", "none");
  Require(file.mGetInteger("Section", "Number", 7) == file.mGetInteger("SECTION", "number", 7),
          "letter case does not count");
  Require(file.mSetString("Section", "Key", value), "a value can be set");
  std::string expected = DecodeSjis(SjisView(EncodeSjis(value)).First(255));
  std::ranges::replace_if(
      expected, [](char c) { return c == '\r' || c == '\n' || c == '\0'; }, ' ');
  Require(file.mGetString("Section", "Key") == expected, "a value is read as it was set");
  Require(file.mGetString("Other", "key", "none") == other, "other values stay as they are");
  const std::string once = ReadFile(path);
  Require(file.mSetString("section", "key", value), "a value can be set again");
  Require(AsciiLowered(ReadFile(path)) == AsciiLowered(once), "which changes nothing");
}

void PatternTarget(std::string_view bytes) {
  PatternSlots slots(WorkFolder());
  WriteFile(slots.FileOf(0), bytes);
  Require(slots.LoadPattern(0).ok(), "any bytes are a pattern file");
  OptionRecord record;
  slots.ApplyPattern(0, record);
  const CompareOptions options(record);
  Require(options.first_column <= options.last_column && options.tab_width >= 1, "it is clamped");
  const PatternSlot slot = slots[0];
  Require(slots.SavePattern(1, slot).ok(), "a pattern can be saved");
  PatternSlots again(WorkFolder());
  Require(again.LoadPattern(1).ok() && again[1].name == slots[1].name, "its name stays");
  for (const OptionKey key : PatternKeys()) {
    const OptionField& field = FieldOf(key);
    if (slot.name.empty() || field.number == nullptr) continue;
    Require(field.Get(again[1].values) == field.Get(slot.values), "a pattern stays what it was");
  }
  Require(slots.DeletePattern(1).ok() && slots.DeletePattern(0).ok(), "a pattern can be deleted");
}

}  // namespace ledrix::fuzz

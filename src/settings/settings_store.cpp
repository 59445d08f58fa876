#include "settings/settings_store.h"

#include <algorithm>

#include "platform/files.h"
#include "platform/replacement.h"
#include "settings/option_draft.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

// A character that may not stand as it is, and the letter behind the backslash that names it.
struct Escape {
  char character;
  char letter;
};
constexpr Escape kEscapes[] = {{'\\', '\\'}, {'\n', 'n'}, {'\r', 'r'}, {'\0', '0'},
                               {'=', 'e'},   {']', 'b'},  {'[', 'o'}};

// `kept` is a character that has an escape but may stand as it is here, or 0 for none.
std::string Escaped(std::string_view text, std::string_view kept) {
  std::string escaped;
  for (const char c : text) {
    const auto* const found = std::find_if(std::begin(kEscapes), std::end(kEscapes),
                                           [c](const Escape& e) { return e.character == c; });
    if (found == std::end(kEscapes) || kept.find(c) != std::string_view::npos) {
      escaped += c;
    } else {
      escaped += '\\';
      escaped += found->letter;
    }
  }
  return escaped;
}

std::string Unescaped(std::string_view text) {
  std::string plain;
  for (size_t i = 0; i < text.size(); ++i) {
    if (text[i] != '\\' || i + 1 == text.size()) {
      plain += text[i];
      continue;
    }
    const char letter = text[++i];
    const auto* const found =
        std::find_if(std::begin(kEscapes), std::end(kEscapes),
                     [letter](const Escape& e) { return e.letter == letter; });
    plain += found == std::end(kEscapes) ? letter : found->character;
  }
  return plain;
}

}  // namespace

Status SettingsStore::Load() {
  ClearSettingKey("");
  unread_ = Status();
  RemoveOldReplacements(path_);
  const Result<std::string> bytes = ReadWholeFile(path_);
  if (!bytes.ok()) {
    if (!bytes.error().IsMissing()) unread_ = bytes.error();
    return bytes.error();
  }
  Parse(bytes.value());
  return Status();
}

void SettingsStore::Parse(std::string_view bytes) {
  std::string section;
  if (bytes.starts_with(kByteOrderMark)) bytes.remove_prefix(kByteOrderMark.size());
  while (!bytes.empty()) {
    const std::string_view line = TakeLine(bytes);
    const size_t equals = line.find('=');
    if (line.size() >= 2 && line.front() == '[' && line.back() == ']') {
      section = Unescaped(line.substr(1, line.size() - 2));
    } else if (equals != std::string_view::npos && equals > 0) {
      WriteSetting(section, Unescaped(line.substr(0, equals)), Unescaped(line.substr(equals + 1)));
    }
  }
}

SettingsStore::Section& SettingsStore::SectionNamed(std::string_view name) {
  const auto [found, is_new] = section_places_.try_emplace(std::string(name), sections_.size());
  if (is_new) sections_.push_back({std::string(name), {}, {}});
  return sections_[found->second];
}

std::string SettingsStore::ReadSetting(std::string_view section, std::string_view key,
                                       std::string_view default_text) const {
  const auto found = section_places_.find(std::string(section));
  if (found == section_places_.end()) return std::string(default_text);
  const Section& holder = sections_[found->second];
  const auto place = holder.places.find(std::string(key));
  if (place == holder.places.end()) return std::string(default_text);
  const std::string& text = holder.values[place->second].text;
  return text.substr(0, text.find('\0'));
}

void SettingsStore::WriteSetting(std::string_view section, std::string_view key,
                                 std::string_view text) {
  Section& target = SectionNamed(section);
  const auto [place, is_new] = target.places.try_emplace(std::string(key), target.values.size());
  if (is_new) {
    target.values.push_back({std::string(key), std::string(text)});
  } else {
    target.values[place->second].text = text;
  }
}

void SettingsStore::ClearSettingKey(std::string_view section) {
  if (section.empty()) {
    // The root stands first: its values have no heading.
    sections_.assign(1, Section());
    section_places_ = {{"", 0}};
  } else if (const auto found = section_places_.find(std::string(section));
             found != section_places_.end()) {
    sections_.erase(sections_.begin() + static_cast<std::ptrdiff_t>(found->second));
    section_places_.clear();
    for (const Section& kept : sections_) {
      section_places_.emplace(kept.name, section_places_.size());
    }
  }
}

Status SettingsStore::Save() const {
  if (!unread_.ok()) return unread_;
  if (const Status failed = MakePrivateFolder(DirOf(path_)); !failed.ok()) return failed;
  std::string bytes;
  for (const Section& section : sections_) {
    if (!section.name.empty()) bytes += "[" + Escaped(section.name, "=[") + "]\n";
    for (const Value& value : section.values) {
      bytes += Escaped(value.key, "]") + "=" + Escaped(value.text, "=[]") + "\n";
    }
  }
  // Behind a backslash the first key's own mark is text and not the file's.
  if (bytes.starts_with(kByteOrderMark)) bytes.insert(0, "\\");
  return ReplaceFile(path_, bytes);
}

void LoadOptions(const SettingsStore& store, OptionRecord& options) {
  for (const OptionField& field : OptionFields()) {
    field.Set(options, store.ReadSetting(field.section, field.key.text(), field.default_text));
  }
}

void SaveOptions(const OptionRecord& options, const EndPaths& end_paths, SettingsStore& store) {
  for (const OptionField& field : OptionFields()) {
    if (field.section != "Option") continue;  // the window writes the others
    const std::string text = field.Get(options);
    store.WriteSetting(field.section, field.key.text(),
                       field.key == "Charset" ? std::string(Trimmed(text)) : text);
    if (field.key == "EndPath") {
      store.WriteSetting("Option", "EndPathOld", end_paths.old_folder);
      store.WriteSetting("Option", "EndPathNew", end_paths.new_folder);
    }
  }
}

std::vector<std::string> CharsetList(const OptionRecord& options) {
  return SplitAt(options.Charset, ' ');
}

}  // namespace ledrix

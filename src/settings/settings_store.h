// The settings that outlive the program: text values under a section and a key.
//
// File format, UTF-8, one item a line:
//   section  "[" name "]"      the values that follow belong to it; before the first one they
//                              belong to the root, the section with the empty name
//   value    key "=" text      of several values under one key the last counts
//   anything else is no item and is dropped when the file is written again
// In names, keys and texts "\\" stands for a backslash, "\n", "\r" and "\0" for a line feed, a
// carriage return and a NUL; in a key "\e" stands for "=" and "\o" for "[", in a name "\b" for "]".
// A text with spaces at its ends keeps them. An empty text is a value, not a missing one.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "platform/error.h"
#include "platform/native_path.h"
#include "settings/option_record.h"

namespace ledrix {

// Read once, changed in memory, and written as a whole. There is one thread.
class SettingsStore {
 public:
  // A store that holds nothing and will be written to `path`.
  explicit SettingsStore(NativePath path) : path_(std::move(path)) { ClearSettingKey(""); }

  const NativePath& path() const { return path_; }

  // Reads the file. Returns why it could not be read; the store holds nothing then.
  Status Load();
  // Why the last Load could not read a file that exists; success when it could, or when there is
  // no file.
  const Status& unread() const { return unread_; }

  // The text up to its first NUL, or the default when the section or the key is missing.
  std::string ReadSetting(std::string_view section, std::string_view key,
                          std::string_view default_text) const;
  void WriteSetting(std::string_view section, std::string_view key, std::string_view text);
  // Drops a section; the empty section name drops everything.
  void ClearSettingKey(std::string_view section);

  // Writes the file, making its folder; after a failure the old file stands as it was. A file that
  // could not be read is not written over: that fails with unread().
  Status Save() const;

 private:
  struct Value {
    std::string key;
    std::string text;
  };
  struct Section {
    std::string name;
    std::vector<Value> values;                       // in the order of the file
    std::unordered_map<std::string, size_t> places;  // of each key in `values`
  };

  void Parse(std::string_view bytes);
  Section& SectionNamed(std::string_view name);

  NativePath path_;
  std::vector<Section> sections_;                           // in the order of the file
  std::unordered_map<std::string, size_t> section_places_;  // of each name in `sections_`
  Status unread_;
};

// Fills every field of the record from the store.
void LoadOptions(const SettingsStore& store, OptionRecord& options);

// The folders that the two sides show when the program ends.
struct EndPaths {
  std::string old_folder;
  std::string new_folder;
};

// Puts every field of the section "Option" and the two folders into the store, in their order.
void SaveOptions(const OptionRecord& options, const EndPaths& end_paths, SettingsStore& store);

// The names of the option Charset; adjacent spaces give an empty name.
std::vector<std::string> CharsetList(const OptionRecord& options);

}  // namespace ledrix

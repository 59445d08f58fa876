// An INI file in the form that existing pattern files have.
//
// File format, Shift_JIS, CR LF, one item a line:
//   section  "[" name "]"
//   value    key "=" text     spaces and tabs around key and text do not belong to them; a text
//                             between quotation marks (" or ') is what stands between them
//   comment  ";" anything     kept, as is any other line
// Names and keys are compared without regard to the case of ASCII letters. Of several values under
// one key the first counts.
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/native_path.h"

namespace ledrix {

// A value on its way into a file or out of one: texts in UTF-8.
struct IniValue {
  std::string_view section;
  std::string_view key;
  std::string text;
};

class clsIniFile {  // NOLINT(readability-identifier-naming)
 public:
  const NativePath& pFileName() const { return file_name_; }
  void pFileName(const NativePath& new_file_name) { file_name_ = new_file_name; }

  // Reads values at once, each as mGetString does: a text that comes in is the default. Fails when
  // the file exists and cannot be read, which the reads below take for a missing one.
  Status GetAll(std::span<IniValue> values) const;

  // Writes values, making file, sections and keys as needed; all other lines stay as they are. The
  // file is replaced once, by all of them; after a failure it is as it was, and one that cannot be
  // read is not written. A line break in a value becomes a space.
  Status SetAll(std::span<const IniValue> values);
  // The same for one value. Returns true on success.
  bool mSetString(std::string_view section, std::string_view key, std::string_view value);

  // The first 255 bytes of a value as it stands in the file; the default when that is empty or
  // the key is missing.
  std::string mGetString(std::string_view section, std::string_view key,
                         std::string_view default_text = {}) const;

  // The whole number a value begins with, 0 when it begins with none; the default when the key is
  // missing. Clamped to 16 bits.
  int16_t mGetInteger(std::string_view section, std::string_view key,
                      int16_t default_number = 0) const;

 private:
  NativePath file_name_;
};

}  // namespace ledrix

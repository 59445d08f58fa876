// Three named sets of text compare options, each in an INI file of the program's folder
// (LedrixPtn1.ini to LedrixPtn3.ini): the name under [Pattern] Name, the values under [Option].
#pragma once

#include <array>
#include <span>
#include <string>
#include <string_view>

#include "platform/error.h"
#include "platform/native_path.h"
#include "settings/option_record.h"

namespace ledrix {

inline constexpr size_t kPatternSlots = 3;

// The keys that a pattern holds, in the order of reading and writing.
std::span<const OptionKey> PatternKeys();

// One pattern in memory; without a name it is empty. Of `values` only the pattern keys count.
struct PatternSlot {
  std::string name;
  OptionRecord values;
};

// The three slots of a run. They start empty. Slots are numbered from 0; after a failure of the
// file system a slot is as it was.
class PatternSlots {
 public:
  // `folder` is the program's folder, with a separator at its end.
  explicit PatternSlots(NativePath folder) : folder_(std::move(folder)) {}

  PatternSlot& operator[](size_t n) { return slots_[n]; }
  const PatternSlot& operator[](size_t n) const { return slots_[n]; }

  // Reads a slot's name and, when it has one, its values; a missing or empty value is the option's
  // default. A missing file empties the slot's name; one that cannot be read is a failure.
  Status LoadPattern(size_t n);
  // Writes a pattern, its name trimmed, into the file of a slot, replacing it once, and into the
  // slot. An empty name deletes the pattern instead. A file that cannot be read is not written.
  Status SavePattern(size_t n, PatternSlot slot);
  // Deletes the slot's file and empties its name.
  Status DeletePattern(size_t n);
  NativePath FileOf(size_t n) const;
  // Copies the slot's values into the option record.
  void ApplyPattern(size_t n, OptionRecord& options) const;

 private:
  NativePath folder_;
  std::array<PatternSlot, kPatternSlots> slots_;
};

}  // namespace ledrix

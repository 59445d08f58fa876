// Option values on their way into the option record: typed texts, checked together and taken over
// together, so that a refused value changes nothing.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "settings/option_record.h"

namespace ledrix {

// True when ContOutDirPath names a folder to which outputs can always go.
bool IsFixedFolder(const std::string& folder);

class OptionDraft {
 public:
  // Starts with the values of the record; numbers, clamped, as their decimal text.
  explicit OptionDraft(const OptionRecord& record);

  // Puts a text under a key that was typed. Returns a message for the user when there is no such
  // key or when the text is none of the values of a flag or a choice; nothing is changed then.
  [[nodiscard]] std::optional<std::string> Set(std::string_view key, std::string_view text);

  // The same for a value that the program itself gives. REQUIRES: the option can have it.
  void Put(OptionKey key, std::string_view text) { texts_[key.index()] = text; }

  const std::string& Text(OptionKey key) const { return texts_[key.index()]; }

  // The message of the first check that fails, lines separated by "\r"; nothing when all pass.
  // `failed_key`, unless it is nullptr, is set to the key of the value that failed.
  [[nodiscard]] std::optional<std::string> Check(
      std::optional<OptionKey>* failed_key = nullptr) const;

  // Writes every value into the record: numbers by their leading number, NoPattern trimmed, the
  // user file types in use packed upwards and trimmed. REQUIRES: Check() found nothing.
  void Accept(OptionRecord& record) const;

 private:
  std::optional<std::string> CheckUserFileTypes(std::optional<OptionKey>& failed_key) const;
  void AcceptUserFileTypes(OptionRecord& record) const;

  std::array<std::string, kOptionCount> texts_;
};

}  // namespace ledrix

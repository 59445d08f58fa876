#include "settings/help_texts.h"

#include <algorithm>
#include <vector>

#include "settings/manual.h"

namespace ledrix {
namespace {

constexpr std::string_view kKeys = "キー: ";

HelpText ReadHelp(const ManualEntry& entry) {
  HelpText help{.key = entry.key, .name = entry.name, .values = {}, .text = {}, .keys = {}};
  for (const std::string_view block : entry.blocks) {
    if (block.starts_with("`") && help.values.empty() && help.text.empty()) {
      help.values = block.substr(std::min(block.size(), entry.key.size() + 3));
    } else if (block.starts_with(kKeys)) {
      help.keys = block.substr(kKeys.size());
    } else if (help.text.empty()) {
      help.text = block;
    }
  }
  return help;
}

std::vector<HelpText> ReadOptions() {
  std::vector<HelpText> options(kOptionCount);
  for (size_t i = 0; i < kOptionCount; ++i) options[i].key = kOptionKeys[i];
  for (const ManualEntry& entry : ReadManual(kManualOptions)) {
    const auto* const key = std::find(std::begin(kOptionKeys), std::end(kOptionKeys), entry.key);
    if (key != std::end(kOptionKeys)) options[key - std::begin(kOptionKeys)] = ReadHelp(entry);
  }
  return options;
}

std::vector<HelpText> ReadControls() {
  std::vector<HelpText> controls;
  for (const ManualEntry& entry : ReadManual(kManualWindows)) {
    if (!entry.key.empty()) controls.push_back(ReadHelp(entry));
  }
  return controls;
}

// `name` as a key of a control, behind `prefix` when that is not empty.
const HelpText* Find(std::string_view prefix, std::string_view name) {
  static const std::vector<HelpText> kControls = ReadControls();
  const auto is_it = [&](const HelpText& text) {
    if (prefix.empty()) return text.key == name;
    return text.key.starts_with(prefix) && text.key.substr(prefix.size()).starts_with('.') &&
           text.key.substr(prefix.size() + 1) == name;
  };
  const auto found = std::find_if(kControls.begin(), kControls.end(), is_it);
  return found == kControls.end() ? nullptr : &*found;
}

}  // namespace

const HelpText& OptionHelp(OptionKey key) {
  static const std::vector<HelpText> kOptions = ReadOptions();
  return kOptions[key.index()];
}

const HelpText* ControlHelp(std::string_view window, std::string_view name) {
  const bool has_index = !name.empty() && name.back() >= '0' && name.back() <= '9';
  const std::string_view array = has_index ? name.substr(0, name.size() - 1) : name;
  for (const std::string_view key : {name, array}) {
    for (const std::string_view prefix : {window, std::string_view()}) {
      if (const HelpText* const found = Find(prefix, key)) return found;
    }
  }
  return nullptr;
}

}  // namespace ledrix

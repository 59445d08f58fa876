#include "listing/text_finder.h"

#include "text/full_width.h"
#include "text/utf8.h"

namespace ledrix {
namespace {

// A text under the rules. The i-th character of it begins at starts[i] of the text that was given;
// one more start stands at the end.
struct FoldedText {
  std::u32string characters;
  std::vector<size_t> starts;
};

FoldedText Fold(std::u32string_view text, FindRules rules) {
  FoldedText folded;
  for (size_t at = 0; at < text.size();) {
    const FullWidthChar wide =
        rules.fold_width ? FullWidthAt(text, at) : FullWidthChar{text[at], 1};
    folded.starts.push_back(at);
    folded.characters += rules.fold_case ? ToLower(wide.character) : wide.character;
    at += wide.taken;
  }
  folded.starts.push_back(text.size());
  return folded;
}

}  // namespace

TextFinder::TextFinder(std::string_view wanted, FindRules rules)
    : rules_(rules), wanted_(Fold(Utf8Characters(wanted), rules).characters) {}

std::vector<FoundText> TextFinder::FindIn(const LineText& line) const {
  std::vector<FoundText> found;
  if (wanted_.empty() || line.empty()) return found;
  std::u32string text;
  std::vector<size_t> columns = {0};
  for (const TextChar& c : line) {
    text += c.character;
    columns.push_back(columns.back() + c.columns);
  }
  const FoldedText folded = Fold(text, rules_);
  for (size_t at = folded.characters.find(wanted_); at != std::u32string::npos;
       at = folded.characters.find(wanted_, at + wanted_.size())) {
    found.push_back({columns[folded.starts[at]], columns[folded.starts[at + wanted_.size()]]});
  }
  return found;
}

}  // namespace ledrix

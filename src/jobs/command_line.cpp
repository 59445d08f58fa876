#include "jobs/command_line.h"

#include <algorithm>
#include <utility>

#include "settings/option_draft.h"
#include "settings/option_record.h"
#include "text/ascii.h"

namespace ledrix {
namespace {

void AddToken(std::string_view piece, std::vector<std::string>& tokens) {
  std::string token(Trimmed(piece));
  if (!token.empty()) tokens.push_back(std::move(token));
}

CommandLineArgs ReadTokens(const std::vector<std::string>& tokens) {
  CommandLineArgs args;
  struct ValueKeyword {
    std::string_view keyword;
    std::string& value;
  };
  const ValueKeyword values[] = {{"/old", args.old_path},
                                 {"/new", args.new_path},
                                 {"/out", args.output_path},
                                 {"/lst", args.list_value}};
  bool is_value = false;  // the token stands behind a keyword that takes one
  for (size_t i = 0; i < tokens.size(); ++i) {
    const bool was_value = std::exchange(is_value, false);
    for (const ValueKeyword& value : values) {
      if (!SameIgnoringAsciiCase(tokens[i], value.keyword)) continue;
      is_value = true;
      if (i + 1 < tokens.size()) value.value = tokens[i + 1];
    }
    const bool is_marks = SameIgnoringAsciiCase(tokens[i], "/Dm");
    const bool is_debug = SameIgnoringAsciiCase(tokens[i], "/Dg");
    args.merge_marks = args.merge_marks || is_marks;
    args.debug_log = args.debug_log || is_debug;
    if (!was_value && !is_value && !is_marks && !is_debug) args.others.push_back(tokens[i]);
  }
  return args;
}

}  // namespace

CommandLineArgs ParseCommandLine(std::string_view text) {
  std::vector<std::string> tokens;
  const std::vector<std::string> pieces = SplitAt(text, '"');
  for (size_t i = 0; i < pieces.size(); ++i) {
    if (i % 2 == 1) {
      AddToken(pieces[i], tokens);
    } else {
      for (const std::string& part : SplitAt(pieces[i], ' ')) AddToken(part, tokens);
    }
  }
  return ReadTokens(tokens);
}

CommandLineArgs ParseCommandLine(const std::vector<std::string>& arguments) {
  std::vector<std::string> tokens;
  for (const std::string& argument : arguments) AddToken(argument, tokens);
  return ReadTokens(tokens);
}

}  // namespace ledrix

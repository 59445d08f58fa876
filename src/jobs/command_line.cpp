#include "jobs/command_line.h"

#include <algorithm>

#include "settings/option_draft.h"
#include "settings/option_record.h"

namespace ledrix {
namespace {

bool IsKeyword(std::string_view token, std::string_view keyword) {
  const auto lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 0x20) : c; };
  return token.size() == keyword.size() &&
         std::equal(token.begin(), token.end(), keyword.begin(),
                    [&](char a, char b) { return lower(a) == lower(b); });
}

void AddToken(std::string_view piece, std::vector<std::string>& tokens) {
  std::string token = TrimSpaces(piece);
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
  for (size_t i = 0; i < tokens.size(); ++i) {
    for (const ValueKeyword& value : values) {
      if (IsKeyword(tokens[i], value.keyword) && i + 1 < tokens.size()) value.value = tokens[i + 1];
    }
    if (IsKeyword(tokens[i], "/Dm")) args.merge_marks = true;
    if (IsKeyword(tokens[i], "/Dg")) args.debug_log = true;
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

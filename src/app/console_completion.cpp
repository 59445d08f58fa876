#include "app/console_completion.h"

#include <CLI/App.hpp>
#include <string_view>

#include "settings/option_key.h"

namespace ledrix {
namespace {

// Its options that begin with "-", each behind a space.
std::string OptionNames(const CLI::App& app) {
  std::string names;
  for (const CLI::Option* const option : app.get_options()) {
    for (const std::string& name : option->get_lnames()) names += " --" + name;
  }
  return names;
}

std::string ValueCases(const CLI::App& app) {
  std::string cases;
  for (const CLI::Option* const option : app.get_options()) {
    if (option->get_lnames().empty() || option->get_description().empty()) continue;
    cases += "    --" + option->get_lnames().front() + ") words='" + option->get_description() +
             "' ;;\n";
  }
  return cases;
}

std::string KeyWords() {
  std::string words;
  for (const std::string_view key : kOptionKeys) words += " " + std::string(key) + "=";
  return words;
}

}  // namespace

std::string BashCompletion(const CLI::App& app) {
  std::string commands;
  std::string options;
  std::string values = ValueCases(app);
  for (const CLI::App* const command : app.get_subcommands({})) {
    commands += " " + command->get_name();
    options +=
        "    " + command->get_name() + ") words=\"$words" + OptionNames(*command) + "\" ;;\n";
    values += ValueCases(*command);
  }
  return R"(# bash completion for ledrixc
_ledrixc() {
  local current=$2 previous=$3 command='' word words=''
  local commands=')" +
         commands.substr(1) + R"('
  for word in "${COMP_WORDS[@]:1:COMP_CWORD-1}"; do
    case " $commands " in *" $word "*) command=$word && break ;; esac
  done
  case $previous in
)" + values +
         "    --set) words='" + KeyWords().substr(1) + R"(' ;;
  esac
  if [[ -z $words && $current == -* ]]; then
    words=')" +
         OptionNames(app).substr(1) + R"('
    case $command in
)" + options +
         R"(    esac
  elif [[ -z $words && -z $command ]]; then
    words=$commands
  fi
  COMPREPLY=($(compgen -W "$words" -- "$current"))
  [[ ${COMPREPLY-} != *= ]] || compopt -o nospace
}
complete -o default -F _ledrixc ledrixc)";
}

}  // namespace ledrix

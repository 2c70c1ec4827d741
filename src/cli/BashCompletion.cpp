#include "cli/Help.h"

#include "base/Text.h"

namespace tolvan {
namespace {

/// %names: the commands. %general: the options of every command. %orders: case branches that say what a command takes.
/// %values: case branches of the options that take a value.
constexpr std::string_view script = R"(# bash completion for tolvan-impexp
_tolvan_impexp() {
  local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} assigned=
  local order= options= arguments= files= index
  # bash takes "--name=value" for three words.
  if [ "$cur" = = ]; then
    cur= assigned=1
  elif [ "$prev" = = ]; then
    prev=${COMP_WORDS[COMP_CWORD-2]} assigned=1
  fi
  for ((index = 1; index < COMP_CWORD; ++index)); do
    case ${COMP_WORDS[index]} in
      --host) ((++index)); [ "${COMP_WORDS[index]}" = = ] && ((++index)) ;;
      -*) ;;
      *) order=${COMP_WORDS[index]}; break ;;
    esac
  done
  COMPREPLY=()
  case $order:$prev in
%values  esac
  [ -n "$assigned" ] && return
  case $order in
    '') options='--version' arguments='%names' ;;
%orders  esac
  case $cur in
    -*) mapfile -t COMPREPLY < <(compgen -W "$options%general" -- "$cur"); return ;;
  esac
  mapfile -t COMPREPLY < <(compgen -W "$arguments" -- "$cur")
  [ -n "$files" ] && compopt -o default 2>/dev/null
  [[ ${COMPREPLY[0]} == *= ]] && compopt -o nospace 2>/dev/null
}
complete -F _tolvan_impexp tolvan-impexp
)";

std::string Joined(const std::vector<std::string>& words) {
  std::string text;
  for (const std::string& word : words) text += (text.empty() ? "" : " ") + word;
  return text;
}

std::string OptionWords(std::span<const OptionDefinition> options) {
  std::string names;
  for (const OptionDefinition& option : options) names += ' ' + option.name;
  return names;
}

/// What follows an option that takes a value. File names are left to bash, which knows about blanks in them.
std::string ValueBranches(const std::string& command, std::span<const OptionDefinition> options) {
  std::string branches;
  for (const OptionDefinition& option : options) {
    if (option.valueName.empty()) continue;
    std::string completed;
    if (option.isPath) completed = "compopt -o default 2>/dev/null; ";
    if (!option.choices.empty()) {
      completed = "mapfile -t COMPREPLY < <(compgen -W '" + Joined(option.choices) + "' -- \"$cur\"); ";
    }
    branches += "    " + command + ':' + option.name + ") " + completed + "return ;;\n";
  }
  return branches;
}

std::string CommandBranch(const Command& command, const std::string& names) {
  std::vector<std::string> words;
  bool takesPath = false;
  for (const ArgumentDefinition& argument : command.arguments) {
    words.insert(words.end(), argument.words.begin(), argument.words.end());
    if (argument.isCommand) words.push_back(names);
    takesPath = takesPath || argument.isPath;
  }
  return "    " + command.name + ") options='" + OptionWords(command.options) + "' arguments='" + Joined(words) +
         "' files=" + (takesPath ? "1" : "") + " ;;\n";
}

}  // namespace

std::string BashCompletion(std::span<const Command> commands) {
  const std::string names = Joined(NamesOf(commands));
  std::string branches;
  std::string values = ValueBranches("*", GlobalOptions());
  for (const Command& command : commands) {
    branches += CommandBranch(command, names);
    values += ValueBranches(command.name, command.options);
  }
  std::string text = ReplaceAll(script, "%names", names);
  text = ReplaceAll(text, "%general", " --ayuda" + OptionWords(GlobalOptions()));
  text = ReplaceAll(text, "%orders", branches);
  return ReplaceAll(text, "%values", values);
}

}  // namespace tolvan

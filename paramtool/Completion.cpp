#include "paramtool/Completion.h"

#include <algorithm>
#include <array>
#include <sstream>

#include "paramtool/Command.h"

namespace loader::paramtool {

namespace {

struct WordRow {
  std::string_view word;
  Completed completed;
};
// A new word of a usage gets its row here.
constexpr auto Words = std::to_array<WordRow>({
    {"FILE", Completed::File},
    {"LIST", Completed::File},
    {"FOLDER", Completed::Folder},
    {"SETUP", Completed::SetUp},
    {"A", Completed::SetUp},
    {"B", Completed::SetUp},
    {"REFERENCE", Completed::SetUp},
    {"DEVICE", Completed::Recorder},
    {"ADDRESS", Completed::Recorder},
    {"MODEL", Completed::Choices},
    {"WHERE", Completed::Nothing},
    {"PATTERN", Completed::Nothing},
    {"KEY=VALUE", Completed::Nothing},
    {"N", Completed::Nothing},
    {"S", Completed::Nothing},
    {"SECONDS", Completed::Nothing},
    {"TAG", Completed::Nothing},
});

std::string_view WithoutRepetition(std::string_view word) {
  constexpr std::string_view Again = "...";
  return word.ends_with(Again) ? word.substr(0, word.size() - Again.size()) : word;
}

// "KOV|RUG" of a word that stands for choices.
std::string ChoicesOf(std::string_view word) {
  return word == "MODEL" ? "KOV|RUG" : std::string(word);
}

// What the script knows of a word: "file", "folder", "setup", "recorder", "nothing", "=ja|en".
std::string Kind(std::string_view word) {
  word = WithoutRepetition(word);
  switch (CompletionOf(word)) {
  case Completed::File:
    return "file";
  case Completed::Folder:
    return "folder";
  case Completed::SetUp:
    return "setup";
  case Completed::Recorder:
    return "recorder";
  case Completed::Choices:
    return "=" + ChoicesOf(word);
  case Completed::Unknown:
  case Completed::Nothing:
    break;
  }
  return "nothing";
}

// "--lang:=ja|en --json -o:file --output:file"
std::string OptionWords(std::span<const OptionRow> rows) {
  std::string words;
  for (const OptionRow& row : rows) {
    std::istringstream names(row.names);
    for (std::string name; std::getline(names, name, ',');) {
      words += (words.empty() ? "" : " ") + std::string(name.size() == 1 ? "-" : "--") + name;
      if (row.value != nullptr) {
        words += ":" + Kind(row.value);
      }
    }
  }
  return words;
}

// The last one stands for all that follow where the usage says so: "file nothing+".
std::string ArgumentWords(const Command& command) {
  std::string words;
  for (const std::string& word : ArgumentsOf(command.usage)) {
    words += (words.empty() ? "" : " ") + Kind(word) + (word.ends_with("...") ? "+" : "");
  }
  return words;
}

std::string CommandRows() {
  std::string rows;
  for (const Command& command : Commands()) {
    rows += std::string("    ") + command.name + ")\n      arguments='" + ArgumentWords(command) + "'\n";
    if (!command.options.empty()) {
      rows += "      options+=' " + OptionWords(command.options) + "'\n";
    }
    rows += "      ;;\n";
  }
  return rows;
}

std::string CommandNames() {
  std::string names;
  for (const Command& command : Commands()) {
    names += std::string(command.name) + " ";
  }
  return names + "help";
}

constexpr std::string_view Before =
    R"BASH(# bash completion of paramtool. Made from the table of commands by "manual bash"; do not edit it.

# The arguments and options of a command: into the caller's `arguments` and `options`.
_paramtool_command() {
  case $1 in
)BASH";

constexpr std::string_view Between = R"BASH(    help)
      arguments='=@NAMES@'
      ;;
  esac
}

# Fills COMPREPLY with what a word of this kind may be. Names of files are left to bash, which quotes them.
_paramtool_offer() {
  local kind=${1%+} current=$2 file
  local heads=(tcp: serial: usb:)
  case $kind in
    =*) mapfile -t COMPREPLY < <(IFS='|'; compgen -W "${kind#=}" -- "$current") ;;
    folder) compopt -o dirnames 2>/dev/null ;;
    file) compopt -o default 2>/dev/null ;;
    setup | recorder)
      [[ $kind == setup ]] && heads+=(default:KOV default:RUG)
      if [[ -n $current || $kind == recorder ]]; then
        mapfile -t COMPREPLY < <(compgen -W "${heads[*]}" -- "$current")
      fi
      if [[ $kind == setup && ${#COMPREPLY[@]} -gt 0 && $current != *:* ]]; then
        while IFS= read -r file; do
          COMPREPLY+=("$(printf %q "$file")")
        done < <(compgen -f -- "$current")
      fi
      [[ ${#COMPREPLY[@]} -eq 0 ]] && compopt -o default 2>/dev/null
      [[ ${COMPREPLY[0]-} == *: ]] && compopt -o nospace 2>/dev/null
      ;;
  esac
  return 0
}

_paramtool() {
  COMPREPLY=()
  # bash breaks words at ':' and '=' as well; here they are one word again.
  local words=() word i
  for ((i = 1; i <= COMP_CWORD; ++i)); do
    word=${COMP_WORDS[i]}
    if [[ ${#words[@]} -gt 0 && ($word == [:=]* || ${words[-1]} == *[:=]) ]]; then
      words[-1]+=$word
    else
      words+=("$word")
    fi
  done
  [[ ${#words[@]} -eq 0 ]] && words=('')
  local current=${words[-1]}
  unset 'words[-1]'

  local options='@COMMON@' arguments='=@NAMES@' command= at=0 value= row
  for word in "${words[@]}"; do
    if [[ -n $value ]]; then
      value=
    elif [[ $word == -* ]]; then
      for row in $options; do
        [[ $row == "$word:"* ]] && value=${row#*:}
      done
    elif [[ -z $command ]]; then
      command=$word
      arguments=
      _paramtool_command "$command"
    else
      ((++at))
    fi
  done

  local whole=$current
  if [[ -z $value && $current == --*=* ]]; then
    for row in $options; do
      [[ $row == "${current%%=*}:"* ]] && value=${row#*:}
    done
    current=${current#*=}
  fi
  if [[ -n $value ]]; then
    _paramtool_offer "$value" "$current"
  elif [[ $current == -* ]]; then
    local names=()
    for row in $options; do
      names+=("${row%%:*}")
    done
    mapfile -t COMPREPLY < <(compgen -W "${names[*]}" -- "$current")
  else
    local kinds=() kind=nothing
    read -ra kinds <<<"$arguments"
    if ((at < ${#kinds[@]})); then
      kind=${kinds[at]}
    elif [[ ${#kinds[@]} -gt 0 && ${kinds[-1]} == *+ ]]; then
      kind=${kinds[-1]}
    fi
    _paramtool_offer "$kind" "$current"
  fi

  # What stands before the last ':' or '=' is a word of its own to bash and stays as it is.
  local head=
  [[ $current == *:* && $COMP_WORDBREAKS == *:* ]] && head=${current%"${current##*:}"}
  [[ $whole == --*=* && $COMP_WORDBREAKS != *=* ]] && head=
  for ((i = 0; i < ${#COMPREPLY[@]}; ++i)); do
    COMPREPLY[i]=${COMPREPLY[i]#"$head"}
    [[ $whole == --*=* && $COMP_WORDBREAKS != *=* ]] && COMPREPLY[i]=${whole%%=*}=${COMPREPLY[i]}
  done
  return 0
}

complete -F _paramtool paramtool
)BASH";

std::string Filled(std::string_view text, std::string_view mark, std::string_view with) {
  std::string filled(text);
  for (std::size_t at = filled.find(mark); at != std::string::npos;
       at = filled.find(mark, at + with.size())) {
    filled.replace(at, mark.size(), with);
  }
  return filled;
}

} // namespace

std::vector<std::string> ArgumentsOf(std::string_view usage) {
  std::vector<std::string> words;
  std::istringstream text{std::string(usage)};
  bool valueOfOption = false;
  for (std::string word; text >> word;) {
    std::erase_if(word, [](char c) { return c == '[' || c == ']'; });
    if (word.starts_with('-')) {
      valueOfOption = true;
    } else if (valueOfOption) {
      valueOfOption = false;
    } else if (word == "..." && !words.empty()) {
      words.back() += word;
    } else {
      words.push_back(word);
    }
  }
  return words;
}

Completed CompletionOf(std::string_view word) {
  word = WithoutRepetition(word);
  if (word.find('|') != std::string_view::npos) {
    return Completed::Choices;
  }
  const auto row = std::ranges::find(Words, word, &WordRow::word);
  return row == Words.end() ? Completed::Unknown : row->completed;
}

std::string BashCompletion() {
  const std::string common = OptionWords(CommonOptions()) + " -h --help";
  std::string names = CommandNames();
  std::ranges::replace(names, ' ', '|');
  return std::string(Before) + CommandRows() + Filled(Filled(Between, "@COMMON@", common), "@NAMES@", names);
}

} // namespace loader::paramtool

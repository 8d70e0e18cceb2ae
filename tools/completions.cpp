#include "completions.h"

#include <algorithm>
#include <sstream>
#include <stdexcept>

namespace tool {
namespace {

// An option as the shells want it.
struct Flag {
  std::vector<std::string> names;  // "-o", "--output"
  std::string what;                // without quotes
  std::string value;               // "FILE"; empty where it takes none
  std::string choices;             // "geojson wkt", where its values are words
  bool again = false;              // may be given again
};

struct Listed {
  std::string name;
  std::string what;
  std::vector<Flag> flags;
};

std::string ChoicesOf(CLI::Option& option) {
  try {
    const std::string words = option.get_validator()->get_description();
    return words.find_first_of("([{:") == std::string::npos ? words : "";
  } catch (const CLI::OptionNotFound&) {
    return "";
  }
}

// The first part of a sentence, so that it stands on a line, without what shells read otherwise.
std::string Short(std::string text) {
  text.resize(std::min({text.find(';'), text.find(":\n"), text.size()}));
  std::replace(text.begin(), text.end(), '\n', ' ');
  std::replace(text.begin(), text.end(), ':', ',');
  std::erase_if(text, [](char c) { return c == '\'' || c == '[' || c == ']'; });
  return text;
}

std::vector<Listed> CommandsOf(const CLI::App& app) {
  std::vector<Listed> commands;
  for (const CLI::App* command : app.get_subcommands([](const CLI::App*) { return true; })) {
    if (command->get_group().empty()) continue;
    Listed listed{command->get_name(), Short(command->get_description()), {}};
    for (const CLI::Option* given : command->get_options()) {
      auto& option = const_cast<CLI::Option&>(*given);  // its validators have no constant door
      Flag flag;
      for (const std::string& name : option.get_snames()) flag.names.push_back("-" + name);
      for (const std::string& name : option.get_lnames()) flag.names.push_back("--" + name);
      if (flag.names.empty()) continue;  // files
      flag.what = Short(option.get_description());
      if (option.get_items_expected_max() > 0) flag.value = option.get_option_text();
      if (!flag.value.empty()) flag.choices = ChoicesOf(option);
      flag.again = option.get_items_expected_max() > 1;
      listed.flags.push_back(std::move(flag));
    }
    commands.push_back(std::move(listed));
  }
  return commands;
}

std::string Joined(const std::vector<std::string>& words, const char* separator) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : separator) + word;
  return all;
}

std::string NamesOf(const std::vector<Listed>& commands) {
  std::string all;
  for (const Listed& command : commands) all += command.name + ' ';
  return all + "help";
}

std::string Bash(const std::vector<Listed>& commands) {
  std::ostringstream out;
  out << "_zelvan() {\n"
         "  local word=\"${COMP_WORDS[COMP_CWORD]}\" words=\n"
         "  local command=\"${COMP_WORDS[1]}\"\n"
         "  COMPREPLY=()\n"
         "  if ((COMP_CWORD == 1)); then\n"
         "    words='"
      << NamesOf(commands)
      << " --help --version'\n"
         "  elif [[ $command == help ]]; then\n"
         "    words='"
      << NamesOf(commands)
      << "'\n"
         "  else\n"
         "    case \"$command ${COMP_WORDS[COMP_CWORD - 1]}\" in\n";
  for (const Listed& command : commands) {
    for (const Flag& flag : command.flags) {
      if (flag.value.empty() || flag.value == "FILE") continue;
      for (const std::string& name : flag.names) {
        out << "      '" << command.name << ' ' << name << "') words='" << flag.choices << "' ;;\n";
      }
    }
    out << "      '" << command.name << " '*)\n        [[ $word != -* ]] || words='";
    for (const Flag& flag : command.flags) out << Joined(flag.names, " ") << ' ';
    out << "'\n        [[ $word == -* ]] || { compopt -o filenames; mapfile -t COMPREPLY < "
           "<(compgen -f -- \"$word\"); } ;;\n";
  }
  out << "    esac\n"
         "  fi\n"
         "  [[ -z $words ]] || mapfile -t COMPREPLY < <(compgen -W \"$words\" -- \"$word\")\n"
         "}\n"
         "complete -F _zelvan zelvan\n";
  return out.str();
}

std::string Zsh(const std::vector<Listed>& commands) {
  std::ostringstream out;
  out << "#compdef zelvan\n"
         "local -a commands\n"
         "commands=(\n";
  for (const Listed& command : commands) {
    out << "  '" << command.name << ':' << command.what << "'\n";
  }
  out << "  'help:say more of a command'\n)\n"
         "if (( CURRENT == 2 )); then\n"
         "  _describe command commands\n"
         "  _arguments '--help[print this]' '--version[print the version]'\n"
         "  return\nfi\n"
         "local command=$words[2]\n"
         "shift words\n"
         "(( CURRENT-- ))\n"
         "case $command in\n"
         "  help) _describe command commands ;;\n";
  for (const Listed& command : commands) {
    out << "  " << command.name << ")\n    _arguments";
    for (const Flag& flag : command.flags) {
      const bool several = flag.names.size() > 1;
      const std::string names = Joined(flag.names, ",");
      out << " \\\n      "
          << (flag.again ? "'*'"
              : several  ? "'(" + Joined(flag.names, " ") + ")'"
                         : "")
          << (several ? '{' + names + '}' : names) << "'[" << flag.what << ']';
      if (flag.value == "FILE") out << ":file:_files";
      if (!flag.value.empty() && flag.value != "FILE") {
        out << ":value:" << (flag.choices.empty() ? "" : "(" + flag.choices + ")");
      }
      out << '\'';
    }
    out << " \\\n      '*:file:_files' ;;\n";
  }
  out << "esac\n";
  return out.str();
}

std::string Fish(const std::vector<Listed>& commands) {
  std::ostringstream out;
  const char* first = "complete -c zelvan -n __fish_use_subcommand -f";
  for (const Listed& command : commands) {
    out << first << " -a " << command.name << " -d '" << command.what << "'\n";
  }
  out << first << " -a help -d 'say more of a command'\n"
      << first << " -l help -d 'print this'\n"
      << first << " -l version -d 'print the version'\n"
      << "complete -c zelvan -n '__fish_seen_subcommand_from help' -f -a '" << NamesOf(commands)
      << "'\n";
  for (const Listed& command : commands) {
    for (const Flag& flag : command.flags) {
      out << "complete -c zelvan -n '__fish_seen_subcommand_from " << command.name << '\'';
      for (const std::string& name : flag.names) {
        const bool is_long = name.rfind("--", 0) == 0;
        out << (is_long ? " -l " : " -s ") << name.substr(is_long ? 2 : 1);
      }
      if (flag.value == "FILE") out << " -r";
      if (!flag.value.empty() && flag.value != "FILE") out << " -x -a '" << flag.choices << '\'';
      out << " -d '" << flag.what << "'\n";
    }
  }
  return out.str();
}

}  // namespace

std::string Completions(const CLI::App& app, const std::string& shell) {
  const std::vector<Listed> commands = CommandsOf(app);
  if (shell == "bash") return Bash(commands);
  return shell == "zsh" ? Zsh(commands) : Fish(commands);
}

}  // namespace tool

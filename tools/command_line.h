// The table of commands, and the command line that it makes.
#pragma once

#include <CLI/CLI.hpp>

#include "options.h"

namespace tool {

// A command of the program. To add one, add its line to the table in command_line.cpp, and a
// paragraph to the man page.
struct Command {
  const char* name;
  const char* what;                          // a line of the help
  int files;                                 // how many it takes at least
  int (*run)(const Options&);                // answers an exit status
  void (*add_options)(CLI::App&, Options&);  // beside those of all commands; may be null
  const char* text;                          // the end of its help
};

// Sets up the commands; the one that is called is put into `called`, or the shell whose completions
// are asked for into `shell`.
void AddCommands(CLI::App& app, Options& options, const Command*& called, std::string& shell);

}  // namespace tool

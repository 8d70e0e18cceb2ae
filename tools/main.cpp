// zelvan: files of polygons in, triangles or combined regions out. The command
// line and nothing else.
#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <iostream>
#include <new>
#include <string>
#include <vector>

#include "command_line.h"
#include "completions.h"
#include "options.h"
#include "output.h"

namespace tool {
namespace {

// The words of the command line; help is a command, too.
std::vector<std::string> WordsOf(int argc, char** argv) {
  std::vector<std::string> words(argv + std::min(argc, 1), argv + argc);
  if (words.empty() || words.front() != "help") return words;
  words.erase(words.begin());
  if (words.size() > 1) words.resize(1);
  words.emplace_back("--help");
  return words;
}

// What is wrong with the first word; empty when nothing is.
std::string CheckCommand(const CLI::App& app, const std::vector<std::string>& words) {
  std::string commands;
  for (const CLI::App* command :
       app.get_subcommands([](const CLI::App* /*any*/) { return true; })) {
    if (!words.empty() && command->get_name() == words.front()) return "";
    commands += command->get_name() + ", ";
  }
  commands += "help (zelvan --help says more)";
  if (words.empty()) return "a command is missing: " + commands;
  if (words.front().rfind('-', 0) == 0) return "";
  return "there is no command " + words.front() + ", but " + commands;
}

void SetUp(CLI::App& app, Options& options, const Command*& called, std::string& shell) {
  app.set_version_flag("--version", "zelvan " ZELVAN_TOOL_VERSION, "print the version");
  app.set_help_flag("-h,--help", "print this");
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.footer("zelvan help COMMAND says more of a command.");
  app.failure_message([](const CLI::App* /*app*/, const CLI::Error& error) {
    return std::string("zelvan: ") + error.what() + "; zelvan help COMMAND says more\n";
  });
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.require_subcommand(1);
  AddCommands(app, options, called, shell);
}

int Fail(const std::string& problem) {
  std::cerr << "zelvan: " << problem << '\n';
  return kUnusable;
}

// Called where no more memory is to be had; nothing that runs there may ask for any, and what
// it would unwind might.
[[noreturn]] void EndOutOfMemory() {
  std::fputs("zelvan: out of memory\n", stderr);
  std::_Exit(kUnusable);
}

int Run(int argc, char** argv) {
  Options options;
  CLI::App app("Cuts polygons into triangles and combines them.", "zelvan");
  const Command* called = nullptr;
  std::string shell;
  SetUp(app, options, called, shell);
  std::vector<std::string> words = WordsOf(argc, argv);
  if (const std::string problem = CheckCommand(app, words); !problem.empty()) return Fail(problem);
  std::reverse(words.begin(), words.end());
  try {
    app.parse(words);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kAllDone : kUnusable;
  }
  if (called == nullptr) {
    std::cout << Completions(app, shell);
    return std::cout.flush() ? kAllDone : Fail("standard output: cannot be written");
  }
  if (const std::string problem = CheckOutputs(options); !problem.empty()) return Fail(problem);
  return called->run(options);
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) {
  std::set_new_handler(tool::EndOutOfMemory);
  try {
    return tool::Run(argc, argv);
  } catch (const std::bad_alloc&) {
    tool::EndOutOfMemory();
  } catch (const std::exception& error) {
    return tool::Fail(error.what());
  }
}

// zelvan: files of polygons in, triangles or combined regions out. The command
// line and nothing else.
#include <zelvan/region.h>

#include <CLI/CLI.hpp>
#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <iostream>
#include <map>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "options.h"
#include "output.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    "Reads .geojson, .json and .wkt (any number of geometries, each on lines of its own), and\n"
    "either from standard input, which is called -, or from a file without an extension.\n"
    "Exit status: 0 all done; 1 some input was refused, left out or changed by more than\n"
    "1/1024 of its area (named on standard error with what is lost by it); 2 bad usage, a\n"
    "file that cannot be read or written, or too little memory.";

constexpr const char* kCombinations =
    "Writes the region as .geojson, .wkt and .svg, or its triangles as .obj (and in the\n"
    "others with --triangles). All polygons share one grid of 2^31 steps along each axis,\n"
    "the finest that holds them. Its step is a power of two: whole numbers come out as they\n"
    "went in where it is 1 or less.\n"
    "What is smaller than a step vanishes.\n";

using Validator = std::function<std::string(const std::string&)>;

Validator OneOf(std::vector<std::string> words, const char* problem) {
  return [words = std::move(words), problem](const std::string& text) -> std::string {
    return std::find(words.begin(), words.end(), text) != words.end() ? "" : problem;
  };
}

std::string CheckStep(const std::string& text) {
  try {
    static_cast<void>(zelvan::Grid({0, 0}, std::stod(text)));
    return "";
  } catch (const std::exception&) {
    return "a step is a power of two, such as 0.0625, 1 or 64";
  }
}

Validator AtLeast(double least, const char* problem) {
  return [=](const std::string& text) -> std::string {
    return std::strtod(text.c_str(), nullptr) >= least ? "" : problem;
  };
}

void AddCommonOptions(CLI::App& command, Options& options) {
  const auto list = [&](const char* name, std::vector<std::string>& to, const char* what) {
    return command.add_option(name, to, what)->allow_extra_args(false);
  };
  list("-o,--output", options.outputs, "file to write, or - ; may be given again")
      ->option_text("FILE");
  command
      .add_option("--format", options.format,
                  "how standard output and files of no known extension are written:\n"
                  "geojson (which is so unless this is given), wkt, svg or obj")
      ->check(OneOf({"geojson", "wkt", "svg", "obj"}, "a format is geojson, wkt, svg or obj"))
      ->option_text("FORMAT");
  list("--only", options.only, "use the features of these names alone; may be given again")
      ->option_text("NAME,...");
  command.add_option("--grid", options.step, "step of the grid, a power of two")
      ->option_text("STEP")
      ->check(CheckStep);
  CLI::Option* repair = command.add_flag("--repair", options.repair,
                                         "mend invalid polygons, which are refused otherwise");
  using zelvan::FillRule;
  const std::map<std::string, FillRule> rules{{"even-odd", FillRule::EvenOdd},
                                              {"non-zero", FillRule::NonZero},
                                              {"positive", FillRule::Positive},
                                              {"negative", FillRule::Negative}};
  command
      .add_option_function<std::string>(
          "--fill", [&options, rules](const std::string& rule) { options.fill = rules.at(rule); },
          "with --repair: what their contours bound, by their winding numbers:\n"
          "even-odd (which is so unless this is given), non-zero, positive or negative")
      ->needs(repair)
      ->check(OneOf({"even-odd", "non-zero", "positive", "negative"},
                    "a rule is even-odd, non-zero, positive or negative"))
      ->option_text("RULE");
  command.add_flag("--delaunay", options.delaunay,
                   "triangles without needless slivers (constrained Delaunay)");
}

void AddTriangulate(CLI::App& app, Options& options) {
  CLI::App* command =
      app.add_subcommand("triangulate", "cut every polygon into triangles")->group("Commands");
  command->add_option("FILE", options.inputs, "files of polygons")->required()->option_text("...");
  AddCommonOptions(*command, options);
  command->footer(std::string("Writes .svg, .obj (one group per polygon), .geojson and .wkt (one\n"
                              "multipolygon of triangles per polygon). Each polygon has a grid of\n"
                              "its own, unless --grid is given.\n") +
                  kFooter);
  command->callback([&] { options.command = Command::kTriangulate; });
}

void AddOffsetOptions(CLI::App& command, Options& options) {
  command.add_option("--distance", options.distance, "by how much; below 0 to shrink")
      ->required()
      ->option_text("LENGTH");
  using zelvan::Join;
  const std::map<std::string, Join> joins{
      {"round", Join::Round}, {"miter", Join::Miter}, {"bevel", Join::Bevel}};
  command
      .add_option_function<std::string>(
          "--join",
          [&options, joins](const std::string& join) { options.offset.join = joins.at(join); },
          "corners are round (which is so unless this is given), miter or bevel")
      ->check(OneOf({"round", "miter", "bevel"}, "a join is round, miter or bevel"))
      ->option_text("JOIN");
  command
      .add_option("--miter-limit", options.offset.miterLimit,
                  "how far a miter's tip may lie from its corner, in distances: 2 unless this is\n"
                  "given; farther ones are cut to a bevel")
      ->check(AtLeast(1.0, "a miter limit is at least 1"))
      ->option_text("NUMBER");
  command
      .add_option("--tolerance", options.offset.tolerance,
                  "how far arcs may be off: a 500th of the distance unless this is given")
      ->check(AtLeast(0.0, "a tolerance is not below 0"))
      ->option_text("LENGTH");
}

void AddCombinations(CLI::App& app, Options& options) {
  const auto add = [&](const char* name, const char* what, Command kind, int files) -> CLI::App& {
    CLI::App* command = app.add_subcommand(name, what)->group("Commands");
    command->add_option("FILE", options.inputs, "files of polygons")
        ->required()
        ->expected(files, CLI::detail::expected_max_vector_size)
        ->option_text("...");
    AddCommonOptions(*command, options);
    command->add_flag("--triangles", options.triangles, "write the triangles of the region");
    command->footer(std::string(kCombinations) + kFooter);
    command->callback([&options, kind] { options.command = kind; });
    return *command;
  };
  add("union", "unite all polygons of the files", Command::kUnion, 1);
  add("subtract", "take the polygons of the further files from those of the first",
      Command::kSubtract, 2);
  add("intersect", "keep what lies in polygons of every file", Command::kIntersect, 2);
  add("xor", "keep what lies in an odd number of the files", Command::kXor, 2);
  AddOffsetOptions(add("offset", "grow the union of all polygons of the files, or shrink it",
                       Command::kOffset, 1),
                   options);
}

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

void SetUp(CLI::App& app, Options& options) {
  app.set_version_flag("--version", "zelvan " ZELVAN_TOOL_VERSION, "print the version");
  app.set_help_flag("-h,--help", "print this");
  app.get_formatter()->label("SUBCOMMAND", "COMMAND");
  app.footer("zelvan help COMMAND says more of a command.");
  app.failure_message([](const CLI::App* /*app*/, const CLI::Error& error) {
    return std::string("zelvan: ") + error.what() + "; zelvan help COMMAND says more\n";
  });
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.require_subcommand(1);
  AddTriangulate(app, options);
  AddCombinations(app, options);
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
  SetUp(app, options);
  std::vector<std::string> words = WordsOf(argc, argv);
  if (const std::string problem = CheckCommand(app, words); !problem.empty()) return Fail(problem);
  std::reverse(words.begin(), words.end());
  try {
    app.parse(words);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? kAllDone : kUnusable;
  }
  if (const std::string problem = CheckOutputs(options); !problem.empty()) return Fail(problem);
  return options.command == Command::kTriangulate ? RunTriangulate(options) : RunCombine(options);
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

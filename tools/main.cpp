// zelvan: files of polygons in, triangles or combined regions out. The command
// line and nothing else.
#include <zelvan/region.h>

#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>
#include <map>
#include <string>

#include "commands.h"
#include "options.h"
#include "output.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    "Reads .geojson, .json and .wkt (one geometry per line, or one in the file), and either\n"
    "from standard input, which is called -.\n"
    "Exit status: 0 all done, 1 some input was refused or left out (named on standard\n"
    "error with the area that is lost by it),\n"
    "2 bad usage, or a file that cannot be read or written.";

constexpr const char* kCombinations =
    "Writes the region as .geojson, .wkt and .svg, or its triangles as .obj (and in the\n"
    "others with --triangles). All polygons share one grid of 2^31 steps along each axis,\n"
    "a power of two: whole numbers come out as they went in where a step is 1 or less.\n"
    "What is smaller than a step vanishes.\n";

void AddCommonOptions(CLI::App& command, Options& options) {
  const auto list = [&](const char* name, std::vector<std::string>& to, const char* what) {
    return command.add_option(name, to, what)->allow_extra_args(false);
  };
  list("-o,--output", options.outputs, "file to write, or - ; may be given again")
      ->type_name("FILE");
  command.add_option("--format", options.format, "what is written to standard output")
      ->check(CLI::IsMember({"geojson", "wkt", "svg", "obj"}));
  list("--only", options.only, "use the features of these names alone")
      ->type_name("NAME,...")
      ->delimiter(',');
  command.add_option("--grid", options.step, "step of the grid, a power of two")
      ->type_name("STEP")
      ->check([](const std::string& text) -> std::string {
        try {
          const double step = std::stod(text);
          static_cast<void>(zelvan::Grid({0, 0}, step));
          return "";
        } catch (const std::exception&) {
          return "a step is a power of two, such as 0.0625, 1 or 64";
        }
      });
  CLI::Option* repair = command.add_flag("--repair", options.repair,
                                         "mend invalid polygons, which are refused otherwise");
  const std::map<std::string, zelvan::FillRule> rules{{"even-odd", zelvan::FillRule::EvenOdd},
                                                      {"non-zero", zelvan::FillRule::NonZero}};
  command.add_option("--fill", options.fill, "what their contours bound: even-odd or non-zero")
      ->needs(repair)
      ->transform(CLI::CheckedTransformer(rules))
      ->type_name("RULE");
  command.add_flag("--delaunay", options.delaunay,
                   "triangles without needless slivers (constrained Delaunay)");
}

void AddTriangulate(CLI::App& app, Options& options) {
  CLI::App* command = app.add_subcommand("triangulate", "cut every polygon into triangles");
  command->add_option("INPUT", options.inputs, "files of polygons")->required();
  AddCommonOptions(*command, options);
  command->footer(std::string("Writes .svg, .obj (one group per polygon), .geojson and .wkt (one\n"
                              "multipolygon of triangles per polygon). Each polygon has a grid of\n"
                              "its own, unless --grid is given.\n") +
                  kFooter);
  command->callback([&] { options.command = Command::kTriangulate; });
}

void AddCombinations(CLI::App& app, Options& options) {
  const auto add = [&](const char* name, const char* what, Command kind, int files) {
    CLI::App* command = app.add_subcommand(name, what);
    command->add_option("FILE", options.inputs, "files of polygons")
        ->required()
        ->expected(files, 1 << 20);
    AddCommonOptions(*command, options);
    command->add_flag("--triangles", options.triangles, "write the triangles of the region");
    command->footer(std::string(kCombinations) + kFooter);
    command->callback([&options, kind] { options.command = kind; });
  };
  add("union", "unite all polygons of the files", Command::kUnion, 1);
  add("subtract", "take the polygons of the further files from those of the first",
      Command::kSubtract, 2);
  add("intersect", "keep what lies in polygons of every file", Command::kIntersect, 2);
  add("xor", "keep what lies in an odd number of the files", Command::kXor, 2);
}

int Run(const Options& options) {
  if (const std::string problem = CheckOutputs(options); !problem.empty()) {
    std::cerr << problem << '\n';
    return kUnusable;
  }
  return options.command == Command::kTriangulate ? RunTriangulate(options) : RunCombine(options);
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) try {
  tool::Options options;
  CLI::App app("Cuts polygons into triangles and combines them.", "zelvan");
  app.set_version_flag("--version", "zelvan " ZELVAN_TOOL_VERSION);
  app.allow_windows_style_options(false);  // a path may begin with a slash
  app.require_subcommand(1);
  tool::AddTriangulate(app, options);
  tool::AddCombinations(app, options);
  try {
    app.parse(argc, argv);
  } catch (const CLI::ParseError& error) {
    return app.exit(error) == 0 ? tool::kAllDone : tool::kUnusable;
  }
  return tool::Run(options);
} catch (const std::exception& error) {
  std::cerr << "zelvan: " << error.what() << '\n';
  return tool::kUnusable;
}

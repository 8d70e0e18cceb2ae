// zelvan: files of polygons in, triangles or combined regions out. The command
// line and nothing else.
#include <CLI/CLI.hpp>
#include <exception>
#include <iostream>

#include "commands.h"
#include "geos.h"
#include "options.h"
#include "output.h"

namespace tool {
namespace {

constexpr const char* kFooter =
    "Reads .geojson, .json and .wkt (one geometry per line, or one in the file).\n"
    "Exit status: 0 all done, 1 some input was refused or left out (named on standard\n"
    "error with the area that is lost by it),\n"
    "2 bad usage, or a file that cannot be read or written.";

constexpr const char* kCombinations =
    "Writes the region as .geojson, .wkt and .svg, or its triangles as .obj (and in the\n"
    "others with --triangles). All contours share one grid of 1048575 steps across the\n"
    "extent of the input; what is smaller than a step vanishes. A polygon with holes is\n"
    "cut into pieces without holes, which are combined one by one: what lies in a hole\n"
    "of one polygon still counts when another covers it.\n";

void AddCommonOptions(CLI::App& command, Options& options) {
  command.add_option("-o,--output", options.outputs, "file to write, may be given again")
      ->type_name("FILE")
      ->allow_extra_args(false);
  command.add_flag("--repair", options.repair, "mend invalid polygons first (even-odd, by GEOS)");
  command.add_option("--only", options.only, "use the features of these names alone")
      ->type_name("NAME,...")
      ->delimiter(',')
      ->allow_extra_args(false);
  command.add_flag_callback(
      "--no-scale", [&] { options.scale = false; },
      "feed coordinates as they are, not scaled by a power of two to an\n"
      "extent between 2^19 and 2^20");
}

void AddTriangulate(CLI::App& app, Options& options) {
  CLI::App* command = app.add_subcommand("triangulate", "cut every polygon into triangles");
  command->add_option("INPUT", options.inputs, "files of polygons")->required();
  AddCommonOptions(*command, options);
  command->footer(std::string("Writes .svg, .obj (one group per polygon), .geojson and .wkt (one\n"
                              "multipolygon of triangles per polygon).\n") +
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
}

int Run(const Options& options) {
  if (const std::string problem = CheckOutputs(options.outputs, options.inputs); !problem.empty()) {
    std::cerr << problem << '\n';
    return kUnusable;
  }
  if (options.repair && !Geos::CanRepair()) {
    std::cerr << "--repair: this program was built without GEOS, which repairs\n";
    return kUnusable;
  }
  return options.command == Command::kTriangulate ? RunTriangulate(options) : RunCombine(options);
}

}  // namespace
}  // namespace tool

int main(int argc, char** argv) {
  tool::Options options;
  CLI::App app("Cuts polygons into triangles, unites and subtracts them.", "zelvan");
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
  try {
    return tool::Run(options);
  } catch (const std::exception& error) {
    std::cerr << "zelvan: " << error.what() << '\n';
    return tool::kUnusable;
  }
}

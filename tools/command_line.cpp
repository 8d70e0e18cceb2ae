#include "command_line.h"

#include <zelvan/region.h>

#include <algorithm>
#include <cstdlib>
#include <exception>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "commands.h"
#include "completions.h"
#include "more_formats.h"

namespace tool {
namespace {

// One of some words, which completions offer.
CLI::Validator OneOf(std::vector<std::string> words, const char* problem) {
  std::string all;
  for (const std::string& word : words) all += (all.empty() ? "" : " ") + word;
  const auto check = [words = std::move(words), problem](const std::string& text) -> std::string {
    return std::find(words.begin(), words.end(), text) != words.end() ? "" : problem;
  };
  return {check, all, ""};
}

std::string CheckStep(const std::string& text) {
  try {
    static_cast<void>(zelvan::Grid({0, 0}, std::stod(text)));
    return "";
  } catch (const std::exception&) {
    return "a step is a power of two, such as 0.0625, 1 or 64";
  }
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
  list("--only", options.only,
       "use the features of these names alone, or with these values of a\n"
       "field; may be given again")
      ->option_text("[FIELD=]NAME,...");
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
  command.add_flag("--explain", options.explain,
                   "say which grid was taken, what its step means, and what moved farthest");
}

void AddTriangles(CLI::App& command, Options& options) {
  command.add_flag("--triangles", options.triangles, "write the triangles of the region");
}

void AddUnionOptions(CLI::App& command, Options& options) {
  AddTriangles(command, options);
  command
      .add_option("--by", options.by,
                  "unite apart what differs in a field: a feature for each of its\nvalues")
      ->option_text("FIELD");
}

void AddEach(CLI::App& command, Options& options) {
  AddTriangles(command, options);
  command.add_flag("--each", options.each,
                   "each feature of the first file for itself, with its properties and id");
}

CLI::Validator AtLeast(double least, const char* problem) {
  const auto check = [=](const std::string& text) -> std::string {
    return std::strtod(text.c_str(), nullptr) >= least ? "" : problem;
  };
  return {check, "", ""};
}

void AddOffsetOptions(CLI::App& command, Options& options) {
  AddTriangles(command, options);
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

constexpr const char* kApart =
    "Writes .svg, .obj (one group per polygon), .geojson and .wkt (one\n"
    "multipolygon of triangles per polygon). Each polygon has a grid of\n"
    "its own, unless --grid is given.\n";

constexpr const char* kTogether =
    "Writes the region as .geojson, .wkt and .svg, or its triangles as .obj (and in the\n"
    "others with --triangles). All polygons share one grid of 2^31 steps along each axis,\n"
    "the finest that holds them. Its step is a power of two: whole numbers come out as they\n"
    "went in where it is 1 or less.\n"
    "What is smaller than a step vanishes.\n";

constexpr const char* kFooter =
    "Features keep their properties and ids; one that is made of several has the properties\n"
    "in which all agree.\n";

constexpr const char* kReads =
    "Reads .geojson, .json and .wkt (any number of geometries, each on lines of its own), and\n"
    "either from standard input, which is called -, or from a file without an extension.\n";

constexpr const char* kStatus =
    "Exit status: 0 all done; 1 some input was refused, left out or changed by more than\n"
    "1/1024 of its area (named on standard error with what is lost by it); 2 bad usage, a\n"
    "file that cannot be read or written, or too little memory.";

constexpr Command kCommands[] = {
    {"triangulate", "cut every polygon into triangles", 1, RunTriangulate, nullptr, kApart},
    {"union", "unite all polygons of the files", 1, RunUnion, AddUnionOptions, kTogether},
    {"subtract", "take the polygons of the further files from those of the first", 2, RunSubtract,
     AddEach, kTogether},
    {"intersect", "keep what lies in polygons of every file", 2, RunIntersect, AddEach, kTogether},
    {"xor", "keep what lies in an odd number of the files", 2, RunXor, AddTriangles, kTogether},
    {"offset", "grow the union of all polygons of the files, or shrink it", 1, RunOffset,
     AddOffsetOptions, kTogether},
};

std::string MoreFormats() {
  if (MoreRead().empty()) return "";
  return "By GDAL it reads " + MoreRead().substr(2) + ",\nand writes " + MoreWritten().substr(2) +
         ".\n";
}

}  // namespace

void AddCommands(CLI::App& app, Options& options, const Command*& called, std::string& shell) {
  for (const Command& entry : kCommands) {
    CLI::App* command = app.add_subcommand(entry.name, entry.what)->group("Commands");
    command->add_option("FILE", options.inputs, "files of polygons")
        ->required()
        ->expected(entry.files, CLI::detail::expected_max_vector_size)
        ->option_text("...");
    AddCommonOptions(*command, options);
    if (entry.add_options != nullptr) entry.add_options(*command, options);
    command->footer(std::string(entry.text) + kFooter + kReads + MoreFormats() + kStatus);
    command->callback([&called, &entry] { called = &entry; });
  }
  app.add_subcommand("completion", "print what a shell completes")
      ->group("")
      ->add_option("SHELL", shell)
      ->required()
      ->check(OneOf(kShells, "a shell is bash, zsh or fish"));
}

}  // namespace tool

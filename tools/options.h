// What the command line asks for.
#pragma once

#include <zelvan/fill_rule.h>
#include <zelvan/region.h>

#include <string>
#include <vector>

namespace tool {

struct Options {
  std::vector<std::string> inputs;   // "-" is standard input
  std::vector<std::string> outputs;  // "-" is standard output
  std::string format;                // of outputs whose extension does not say it; may be empty
  std::vector<std::string> only;     // lists of names of features, or of values of a field
  std::string by;                    // of a union: the field whose values are united apart
  double step = 0;                   // of the grid; 0 for the finest
  bool repair = false;
  zelvan::FillRule fill = zelvan::FillRule::EvenOdd;
  bool triangles = false;  // of a combination: its triangles, too
  bool delaunay = false;
  bool each = false;     // of a combination: each feature of the first file for itself
  bool explain = false;  // what the grid did
  double distance = 0;   // of an offset
  zelvan::OffsetOptions offset;
};

// Exit statuses of every command.
inline constexpr int kAllDone = 0;
inline constexpr int kSomeRefused = 1;
inline constexpr int kUnusable = 2;

inline constexpr const char* kStandard = "-";

// Why nothing comes of a polygon.
inline constexpr const char* kNotUsable = "not usable";
inline constexpr const char* kNoArea = "no area on the grid";
inline constexpr const char* kNothingLeft = "its contours bound nothing";

// The extension of a path in lower case, ".svg".
std::string Extension(const std::string& path);

// How an output is written, ".svg": as its extension says, or else options.format; empty where
// neither does.
std::string FormatOf(const Options& options, const std::string& output);

}  // namespace tool

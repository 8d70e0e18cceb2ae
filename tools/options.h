// What the command line asks for.
#pragma once

#include <string>
#include <vector>

namespace tool {

enum class Command { kTriangulate, kUnion, kSubtract };

struct Options {
  Command command = Command::kTriangulate;
  std::vector<std::string> inputs;
  std::vector<std::string> outputs;
  std::vector<std::string> only;  // names of features; empty means all
  bool scale = true;
  bool repair = false;
  bool triangles = false;  // svg of a combination: its triangles, too
};

// Exit statuses of every command.
inline constexpr int kAllDone = 0;
inline constexpr int kSomeRefused = 1;
inline constexpr int kUnusable = 2;

// The extension of a path in lower case, ".svg".
std::string Extension(const std::string& path);

}  // namespace tool

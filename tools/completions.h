// What shells complete, made from the table of commands and their options.
#pragma once

#include <CLI/CLI.hpp>
#include <string>
#include <vector>

namespace tool {

inline const std::vector<std::string> kShells{"bash", "zsh", "fish"};

// The script for one of the shells.
std::string Completions(const CLI::App& app, const std::string& shell);

}  // namespace tool

#include "options.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <filesystem>

#include "more_formats.h"

namespace tool {

std::string Extension(const std::string& path) {
  std::string extension = std::filesystem::path(path).extension().string();
  std::transform(extension.begin(), extension.end(), extension.begin(), [](char c) {
    return static_cast<char>(std::tolower(static_cast<unsigned char>(c)));
  });
  return extension;
}

std::string FormatOf(const Options& options, const std::string& output) {
  constexpr std::array known{".svg", ".obj", ".geojson", ".json", ".wkt"};
  if (output != kStandard) {
    std::string extension = Extension(output);
    const bool is_known = std::find(known.begin(), known.end(), extension) != known.end();
    if (is_known || WritesMore(extension)) return extension;
  }
  if (!options.format.empty()) return "." + options.format;
  return output == kStandard ? ".geojson" : "";
}

}  // namespace tool

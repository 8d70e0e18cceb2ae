#include "output.h"

#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "options.h"

namespace tool {

std::string CheckOutputs(const std::vector<std::string>& outputs,
                         const std::vector<std::string>& inputs) {
  for (const std::string& output : outputs) {
    const std::string extension = Extension(output);
    if (extension != ".svg" && extension != ".obj" && extension != ".geojson" &&
        extension != ".json" && extension != ".wkt") {
      return output + ": unknown extension: .svg, .obj, .geojson and .wkt are written";
    }
    for (const std::string& input : inputs) {
      std::error_code ignored;
      if (std::filesystem::equivalent(output, input, ignored)) {
        return output + ": is an input as well, and would be overwritten";
      }
    }
  }
  return "";
}

void WriteOutputs(const std::vector<std::string>& outputs, const std::vector<Item>& items,
                  Show show) {
  for (const std::string& output : outputs) {
    std::ofstream out(output, std::ios::binary);
    const std::string extension = Extension(output);
    if (extension == ".svg") {
      WriteSvg(out, items, show);
    } else if (extension == ".obj") {
      WriteObj(out, items);
    } else if (extension == ".wkt") {
      WriteWkt(out, items, show);
    } else {
      WriteGeoJson(out, items, show);
    }
    if (!out.flush()) throw std::runtime_error(output + ": cannot be written");
  }
}

std::string Shortest(double value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

}  // namespace tool

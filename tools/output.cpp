#include "output.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

namespace tool {
namespace {

bool IsKnown(const std::string& extension) {
  constexpr std::array known{".svg", ".obj", ".geojson", ".json", ".wkt"};
  return std::find(known.begin(), known.end(), extension) != known.end();
}

void Write(std::ostream& out, const std::string& extension, const std::vector<Item>& items,
           Show show) {
  if (extension == ".svg") {
    WriteSvg(out, items, show);
  } else if (extension == ".obj") {
    WriteObj(out, items);
  } else if (extension == ".wkt") {
    WriteWkt(out, items, show);
  } else {
    WriteGeoJson(out, items, show);
  }
}

}  // namespace

std::string CheckOutputs(const Options& options) {
  for (const std::string& output : options.outputs) {
    if (output == kStandard) continue;
    if (!IsKnown(Extension(output))) {
      return output + ": unknown extension: .svg, .obj, .geojson and .wkt are written";
    }
    for (const std::string& input : options.inputs) {
      std::error_code ignored;
      if (std::filesystem::equivalent(output, input, ignored)) {
        return output + ": is an input as well, and would be overwritten";
      }
    }
  }
  return "";
}

void WriteOutputs(const Options& options, const std::vector<Item>& items, Show show) {
  for (const std::string& output : options.outputs) {
    if (output == kStandard) {
      Write(std::cout, "." + options.format, items, show);
      if (!std::cout.flush()) throw std::runtime_error("standard output: cannot be written");
      continue;
    }
    std::ofstream out(output, std::ios::binary);
    Write(out, Extension(output), items, show);
    if (!out.flush()) throw std::runtime_error(output + ": cannot be written");
  }
}

std::ostream& ReportStream(const Options& options) {
  const auto& outputs = options.outputs;
  const bool taken = std::find(outputs.begin(), outputs.end(), kStandard) != outputs.end();
  return taken ? std::cerr : std::cout;
}

std::string Shortest(double value) {
  std::array<char, 32> text{};
  const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
  return {text.data(), end};
}

Ring Corners(const zelvan::Mesh& mesh, std::size_t triangle) {
  Ring ring;
  for (const std::uint32_t corner : mesh.triangles[triangle]) {
    ring.push_back(mesh.vertices[corner]);
  }
  return ring;
}

double TriangleArea(const zelvan::Mesh& mesh) {
  double area = 0;
  for (std::size_t i = 0; i < mesh.triangles.size(); ++i) area += SignedArea(Corners(mesh, i));
  return area;
}

}  // namespace tool

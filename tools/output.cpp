#include "output.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <stdexcept>

#include "more_formats.h"

namespace tool {
namespace {

constexpr double kFewestWithExponent = 1e21;

void Write(std::ostream& out, const std::string& extension, const std::vector<Item>& items,
           Show show, const std::string& crs) {
  if (extension == ".svg") {
    WriteSvg(out, items, show);
  } else if (extension == ".obj") {
    WriteObj(out, items);
  } else if (extension == ".wkt") {
    WriteWkt(out, items, show);
  } else {
    WriteGeoJson(out, items, show, crs);
  }
}

}  // namespace

std::string CheckOutputs(const Options& options) {
  for (const std::string& output : options.outputs) {
    if (FormatOf(options, output).empty()) {
      return output + ": unknown extension: .svg, .obj, .geojson, .wkt" + MoreWritten() +
             " are written, and what --format says";
    }
    if (output == kStandard) continue;
    for (const std::string& input : options.inputs) {
      std::error_code ignored;
      if (std::filesystem::equivalent(output, input, ignored)) {
        return output + ": is an input as well, and would be overwritten";
      }
    }
  }
  return "";
}

void WriteOutput(const Options& options, const std::string& output, const std::vector<Item>& items,
                 Show show, const std::string& crs) {
  const std::string format = FormatOf(options, output);
  if (output != kStandard && WritesMore(format)) return WriteMore(output, items, show, crs);
  if (output == kStandard) {
    Write(std::cout, format, items, show, crs);
    if (!std::cout.flush()) throw std::runtime_error("standard output: cannot be written");
    return;
  }
  std::ofstream out(output, std::ios::binary);
  Write(out, format, items, show, crs);
  if (!out.flush()) throw std::runtime_error(output + ": cannot be written");
}

std::ostream& ReportStream(const Options& options) {
  const auto& outputs = options.outputs;
  const bool taken = std::find(outputs.begin(), outputs.end(), kStandard) != outputs.end();
  return taken ? std::cerr : std::cout;
}

std::string Shortest(double value) {
  const double size = std::abs(value);
  const bool digits = size == 0 || (size >= 1e-6 && size < kFewestWithExponent);
  std::array<char, 32> text{};
  char* const end = text.data() + text.size();
  const auto result = digits ? std::to_chars(text.data(), end, value, std::chars_format::fixed)
                             : std::to_chars(text.data(), end, value);
  return {text.data(), result.ptr};
}

std::string Rounded(double value) {
  if (std::abs(value) >= 1e9 && std::abs(value) < kFewestWithExponent) {
    return Shortest(std::round(value));
  }
  std::array<char, 32> text{};
  std::snprintf(text.data(), text.size(), "%.9g", value);
  return Shortest(std::strtod(text.data(), nullptr));
}

std::vector<Polygon> PolygonsOf(const Item& item, Show show) {
  if (show == Show::kRegion) return item.region.Polygons();
  std::vector<Polygon> triangles;
  for (std::size_t i = 0; i < item.mesh.triangles.size(); ++i) {
    triangles.push_back({Corners(item.mesh, i), {}});
  }
  return triangles;
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

// Files out: what the extension of each says.
#pragma once

#include <cstddef>
#include <iosfwd>
#include <string>
#include <vector>

#include "geometry.h"
#include "options.h"

namespace tool {

// One polygon of the input, or the result of a combination.
struct Item {
  std::string name;         // of its feature, may be empty
  std::size_t feature = 0;  // number within its file, from 1; 0 for a combination
  std::size_t polygon = 0;  // number within its feature, from 1
  Attributes attributes;    // of its feature, or of all that it is made of
  Region region;
  zelvan::Mesh mesh;  // without triangles until the region is cut
};

enum class Show { kTriangles, kRegion };

// The reason why these outputs cannot be meant: an extension that is not known or a file that
// is also read. Empty when all is well.
std::string CheckOutputs(const Options& options);

// Writes one of the outputs; .obj always shows triangles. `crs` is the coordinate reference system
// of the items, empty where none is named. Throws std::runtime_error where that
// cannot be written.
void WriteOutput(const Options& options, const std::string& output, const std::vector<Item>& items,
                 Show show, const std::string& crs);

// The stream for what is said about the work: standard output, unless that is an output.
std::ostream& ReportStream(const Options& options);

// The fewest digits that read back as the same double; with an exponent from 1e21 on and below
// 1e-6 alone.
std::string Shortest(double value);
// The same of the value to nine digits; below 1e21 to the whole number where that has more.
std::string Rounded(double value);

// What an item shows.
std::vector<Polygon> PolygonsOf(const Item& item, Show show);

// The corners of a triangle.
Ring Corners(const zelvan::Mesh& mesh, std::size_t triangle);
double TriangleArea(const zelvan::Mesh& mesh);

void WriteSvg(std::ostream& out, const std::vector<Item>& items, Show show);
void WriteObj(std::ostream& out, const std::vector<Item>& items);
void WriteGeoJson(std::ostream& out, const std::vector<Item>& items, Show show,
                  const std::string& crs);
void WriteWkt(std::ostream& out, const std::vector<Item>& items, Show show);

}  // namespace tool

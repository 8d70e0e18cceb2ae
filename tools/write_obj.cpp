// Wavefront OBJ: the vertices of each polygon once, one group per polygon.
#include <cctype>
#include <ostream>

#include "output.h"

namespace tool {
namespace {

// A group's name is one word.
std::string GroupName(const Item& item) {
  std::string name = item.name.empty() ? "feature" : item.name;
  for (char& c : name) {
    if (std::isspace(static_cast<unsigned char>(c)) != 0) c = '_';
  }
  if (item.feature == 0) return name;
  return name + "_" + std::to_string(item.feature) + "_" + std::to_string(item.polygon);
}

}  // namespace

void WriteObj(std::ostream& out, const std::vector<Item>& items) {
  out << "# Triangles by zelvan. Faces run counter-clockwise seen from +z.\n";
  std::size_t first = 1;
  for (const Item& item : items) {
    out << "g " << GroupName(item) << '\n';
    for (const Point& p : item.mesh.vertices) {
      out << "v " << Shortest(p.x) << ' ' << Shortest(p.y) << " 0\n";
    }
    for (const auto& [a, b, c] : item.mesh.triangles) {
      out << "f " << first + a << ' ' << first + b << ' ' << first + c << '\n';
    }
    first += item.mesh.vertices.size();
  }
}

}  // namespace tool

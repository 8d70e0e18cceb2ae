// Reads a GeoJSON file, cuts its first feature by the others and draws the triangles.
//
// usage: cut FILE.geojson PICTURE.svg
//
// cut.py does the same in Python.
#include <zelvan/region.h>

#include <cstdio>
#include <exception>
#include <fstream>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

using nlohmann::json;
using zelvan::Box;
using zelvan::Point;
using zelvan::Polygon;
using zelvan::Region;
using zelvan::Ring;

std::vector<Ring> RingsOf(const json& polygon) {
  std::vector<Ring> rings;
  for (const json& positions : polygon) {
    rings.emplace_back();
    for (const json& position : positions) {
      rings.back().push_back({position.at(0).get<double>(), position.at(1).get<double>()});
    }
  }
  return rings;
}

// The union of a geometry's polygons, on one grid.
Region RegionOf(const json& geometry) {
  const std::string type = geometry.at("type").get<std::string>();
  if (type != "Polygon" && type != "MultiPolygon")
    throw std::runtime_error(type + "s have no area");
  const json& coordinates = geometry.at("coordinates");
  std::vector<std::vector<Ring>> polygons;
  std::vector<Ring> all;
  for (const json& polygon : type == "Polygon" ? json::array({coordinates}) : coordinates) {
    polygons.push_back(RingsOf(polygon));
    all.insert(all.end(), polygons.back().begin(), polygons.back().end());
  }
  const zelvan::Grid grid = zelvan::Grid::Covering(all);
  std::vector<Region> regions;
  regions.reserve(polygons.size());
  for (const auto& rings : polygons) regions.emplace_back(rings, zelvan::FillRule::EvenOdd, grid);
  return zelvan::Unite(regions);
}

// An SVG of what lies in a box.
class Picture {
 public:
  Picture(const char* path, const Box& box)
      : file_(path), west_(box.min.x), north_(box.max.y), scale_(kPixels / (box.max.x - west_)) {
    file_ << R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="-5 -5 )" << kPixels + 10 << ' '
          << Number((north_ - box.min.y) * scale_ + 10) << "\">\n";
  }

  void Triangles(const Region& region, const char* colour) {
    const zelvan::Mesh mesh = zelvan::Triangulate(region);
    file_ << "<path fill=\"" << colour << R"(" stroke="white" stroke-width=".6" d=")";
    for (const auto& [a, b, c] : mesh.triangles) {
      file_ << "\nM" << Place(mesh.vertices[a]) << 'L' << Place(mesh.vertices[b]) << 'L'
            << Place(mesh.vertices[c]) << 'Z';
    }
    file_ << "\"/>\n";
  }

  void Outlines(const Region& region) {
    file_ << R"(<path fill="none" stroke="#444" stroke-width="1.5" d=")";
    for (const Polygon& polygon : region.Polygons()) {
      Outline(polygon.outer);
      for (const Ring& hole : polygon.holes) Outline(hole);
    }
    file_ << "\"/>\n";
  }

  void Finish() {
    file_ << "</svg>\n";
    file_.close();
    if (!file_) throw std::runtime_error("the picture cannot be written");
  }

 private:
  static constexpr int kPixels = 900;

  void Outline(const Ring& ring) {
    char mark = 'M';
    file_ << '\n';
    for (const Point& point : ring) {
      file_ << mark << Place(point);
      mark = 'L';
    }
    file_ << 'Z';
  }

  std::string Place(const Point& p) const {
    return Number((p.x - west_) * scale_) + ' ' + Number((north_ - p.y) * scale_);
  }

  static std::string Number(double number) {
    char text[32];
    std::snprintf(text, sizeof text, "%.2f", number);
    return text;
  }

  std::ofstream file_;
  double west_;
  double north_;
  double scale_;
};

void Cut(const char* file, const char* picture) {
  std::ifstream text(file);
  std::vector<Region> regions;
  const json document = json::parse(text);
  for (const json& feature : document.at("features")) {
    regions.push_back(RegionOf(feature.at("geometry")));
  }
  if (regions.empty()) throw std::runtime_error("there is no feature");
  const Region land = regions.front();
  regions.erase(regions.begin());
  const Region knife = zelvan::Unite(regions);
  const Region kept = land - knife;
  const Region cut = land & knife;
  std::printf("area %.4f, of this kept %.4f and cut off %.4f\n", land.Area(), kept.Area(),
              cut.Area());

  Picture svg(picture, (land | knife).Bounds());
  svg.Triangles(kept, "#8fb8a8");
  svg.Triangles(cut, "#e0b084");
  svg.Outlines(land);
  svg.Outlines(knife);
  svg.Finish();
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fprintf(stderr, "usage: cut FILE.geojson PICTURE.svg\n");
    return 1;
  }
  try {
    Cut(argv[1], argv[2]);
    return 0;
  } catch (const std::exception& e) {
    std::fprintf(stderr, "cut: %s\n", e.what());
    return 1;
  }
}

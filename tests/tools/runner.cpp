#include "runner.h"

#include <geos_c.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>
#include <vector>

namespace fs = std::filesystem;

namespace {

void Count(GEOSContextHandle_t geos, const GEOSGeometry* polygon, Geometry& seen) {
  double area = 0;
  GEOSArea_r(geos, polygon, &area);
  seen.area += area;
  seen.valid = seen.valid && GEOSisValid_r(geos, polygon) == 1;
  ++seen.polygons;
  seen.holes += static_cast<std::size_t>(GEOSGetNumInteriorRings_r(geos, polygon));
  const GEOSCoordSequence* ring =
      GEOSGeom_getCoordSeq_r(geos, GEOSGetExteriorRing_r(geos, polygon));
  unsigned points = 0;
  char counter_clockwise = 0;
  GEOSCoordSeq_getSize_r(geos, ring, &points);
  if (points >= 4) GEOSCoordSeq_isCCW_r(geos, ring, &counter_clockwise);
  if (points == 4 && counter_clockwise == 1) ++seen.triangles;
}

void Walk(GEOSContextHandle_t geos, const GEOSGeometry* geometry, Geometry& seen) {
  if (GEOSGeomTypeId_r(geos, geometry) == GEOS_POLYGON) {
    Count(geos, geometry, seen);
    return;
  }
  const int parts = GEOSGetNumGeometries_r(geos, geometry);
  for (int i = 0; i < parts; ++i) Walk(geos, GEOSGetGeometryN_r(geos, geometry, i), seen);
}

}  // namespace

std::string Outcome::Cell(std::size_t from_right) const {
  const auto row = text.find_last_of('\n', text.size() - 2) + 1;
  std::istringstream words(text.substr(row));
  const std::vector<std::string> cells{std::istream_iterator<std::string>(words), {}};
  return from_right < cells.size() ? cells[cells.size() - 1 - from_right] : "";
}

void ToolTest::SetUp() {
  folder_ = fs::temp_directory_path() / ("zelvan-tools-" + std::to_string(std::random_device{}()));
  ASSERT_TRUE(fs::create_directory(folder_));
}

void ToolTest::Write(const std::string& name, const std::string& text) const {
  std::ofstream(folder_ / name, std::ios::binary) << text;
}

std::string ToolTest::Read(const std::string& name) const {
  std::ifstream stream(folder_ / name, std::ios::binary);
  return {std::istreambuf_iterator<char>(stream), {}};
}

Outcome ToolTest::Run(const std::string& arguments, const std::string& program) const {
  std::string command = "\"" + program + "\" ";
  for (const char c : arguments) command += c == '@' ? folder_.string() : std::string(1, c);
  Outcome outcome{-1, {}};
  FILE* pipe = popen((command + " 2>&1").c_str(), "r");
  if (pipe == nullptr) return outcome;
  std::array<char, 4096> buffer{};
  while (const std::size_t size = fread(buffer.data(), 1, buffer.size(), pipe)) {
    outcome.text.append(buffer.data(), size);
  }
  const int status = pclose(pipe);
  if (WIFEXITED(status)) outcome.status = WEXITSTATUS(status);
  return outcome;
}

Geometry ToolTest::Look(const std::string& name) const {
  GEOSContextHandle_t geos = GEOS_init_r();
  GEOSWKTReader* wkt = GEOSWKTReader_create_r(geos);
  GEOSGeoJSONReader* json = GEOSGeoJSONReader_create_r(geos);
  Geometry seen;
  seen.valid = true;
  const bool by_line = fs::path(name).extension() == ".wkt";
  std::istringstream text(Read(name));
  for (std::string part; std::getline(text, part, by_line ? '\n' : '\0'); ++seen.lines) {
    GEOSGeometry* geometry = by_line ? GEOSWKTReader_read_r(geos, wkt, part.c_str())
                                     : GEOSGeoJSONReader_readGeometry_r(geos, json, part.c_str());
    seen.valid = seen.valid && geometry != nullptr;
    if (geometry == nullptr) continue;
    Walk(geos, geometry, seen);
    GEOSGeom_destroy_r(geos, geometry);
  }
  seen.valid = seen.valid && seen.lines > 0;
  GEOSGeoJSONReader_destroy_r(geos, json);
  GEOSWKTReader_destroy_r(geos, wkt);
  GEOS_finish_r(geos);
  return seen;
}

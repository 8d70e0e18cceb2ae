#include "runner.h"

#include <geos_c.h>
#include <sys/wait.h>

#include <array>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <random>
#include <sstream>

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
  std::istringstream lines(text);
  std::string line;
  std::string last;
  while (std::getline(lines, line)) {
    if (!line.empty()) last = line;
  }
  std::istringstream words(last);
  const std::vector<std::string> cells{std::istream_iterator<std::string>(words), {}};
  return from_right < cells.size() ? cells[cells.size() - 1 - from_right] : "";
}

void ToolTest::SetUp() {
  folder_ = fs::temp_directory_path() / ("zelvan-tools-" + std::to_string(std::random_device{}()));
  ASSERT_TRUE(fs::create_directory(folder_));
}

void ToolTest::TearDown() {
  fs::remove_all(folder_);
}

std::string ToolTest::Write(const std::string& name, const std::string& text) const {
  std::ofstream(Path(name), std::ios::binary) << text;
  return Path(name);
}

std::string ToolTest::Read(const std::string& name) const {
  std::ifstream stream(Path(name), std::ios::binary);
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
  const std::string text = Read(name);
  GEOSGeometry* geometry = nullptr;
  if (fs::path(name).extension() == ".wkt") {
    GEOSWKTReader* reader = GEOSWKTReader_create_r(geos);
    geometry = GEOSWKTReader_read_r(geos, reader, text.c_str());
    GEOSWKTReader_destroy_r(geos, reader);
  } else {
    GEOSGeoJSONReader* reader = GEOSGeoJSONReader_create_r(geos);
    geometry = GEOSGeoJSONReader_readGeometry_r(geos, reader, text.c_str());
    GEOSGeoJSONReader_destroy_r(geos, reader);
  }
  Geometry seen;
  if (geometry != nullptr) {
    seen.readable = seen.valid = true;
    Walk(geos, geometry, seen);
    GEOSGeom_destroy_r(geos, geometry);
  }
  GEOS_finish_r(geos);
  return seen;
}

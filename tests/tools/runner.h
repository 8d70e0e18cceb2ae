// Runs the host program in a folder of its own, and looks at its files with
// GEOS, which the program does not use for writing.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>

inline constexpr const char* kWithGeos = ZELVAN_TOOL;
inline constexpr const char* kWithoutGeos = ZELVAN_TOOL_WITHOUT_GEOS;

struct Outcome {
  int status;
  std::string text;  // standard output and standard error

  // A cell of the table's last row by its column, counted from the right.
  std::string Cell(std::size_t from_right) const;
};

// What a written file holds, by GEOS.
struct Geometry {
  bool valid = false;  // readable, and every polygon of it valid
  std::size_t lines = 0;
  std::size_t polygons = 0;
  std::size_t holes = 0;
  std::size_t triangles = 0;  // polygons of three corners, counter-clockwise
  double area = 0;
};

class ToolTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override { std::filesystem::remove_all(folder_); }

  void Write(const std::string& name, const std::string& text) const;
  std::string Read(const std::string& name) const;
  // "@" stands for the folder
  Outcome Run(const std::string& arguments, const std::string& program = kWithGeos) const;
  Geometry Look(const std::string& name) const;  // .geojson or .wkt

 private:
  std::filesystem::path folder_;
};

// Runs the host program in a folder of its own, and looks at its files with
// GEOS, which the program does not use for writing.
#pragma once

#include <gtest/gtest.h>

#include <cstddef>
#include <filesystem>
#include <string>
#include <vector>

struct Outcome {
  int status;
  std::string text;  // standard output and standard error

  // A cell of the table's last row by its column, counted from the right.
  std::string Cell(std::size_t from_right) const;
};

// What a written file holds, by GEOS.
struct Geometry {
  bool readable = false;
  bool valid = false;  // every polygon of it
  std::size_t polygons = 0;
  std::size_t holes = 0;
  std::size_t triangles = 0;  // polygons of three corners, counter-clockwise
  double area = 0;
};

class ToolTest : public testing::Test {
 protected:
  void SetUp() override;
  void TearDown() override;

  std::string Path(const std::string& name) const { return (folder_ / name).string(); }
  std::string Write(const std::string& name, const std::string& text) const;  // gives the path
  std::string Read(const std::string& name) const;
  // "@" stands for the folder
  Outcome Run(const std::string& arguments, const std::string& program = ZELVAN_TOOL) const;
  Geometry Look(const std::string& name) const;  // .geojson, or .wkt of one line

 private:
  std::filesystem::path folder_;
};

// The formats that GDAL reads and writes, GeoPackage, Shapefile, FlatGeobuf, TopoJSON and DXF, with
// their coordinate reference systems. A program that is built without GDAL has none of them
// (more_formats_none.cpp).
#pragma once

#include <string>
#include <vector>

#include "gatherer.h"
#include "output.h"

namespace tool {

// By extension, ".gpkg"; what of them is read, and what written, to go on in a list: ", .gpkg".
bool ReadsMore(const std::string& extension);
bool WritesMore(const std::string& extension);
std::string MoreRead();
std::string MoreWritten();

// All features of all layers of a file. `size` is what `advance` adds up to. Throws UnreadableFile.
void ReadMore(const std::string& file, std::size_t size, const Advance& advance,
              Gatherer& gatherer);

// Writes the file anew. Throws std::runtime_error.
void WriteMore(const std::string& output, const std::vector<Item>& items, Show show,
               const std::string& crs);

// Are two systems the same, but for the order of axes?
bool IsSameCrs(const std::string& a, const std::string& b);

// What a system is called: "EPSG:25832" where it has a code.
std::string CrsName(const std::string& crs);

}  // namespace tool

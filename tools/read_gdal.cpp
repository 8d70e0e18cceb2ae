// Files by GDAL to features (more_formats.h).
#include <cpl_conv.h>
#include <ogr_api.h>
#include <ogr_srs_api.h>

#include <algorithm>
#include <array>
#include <nlohmann/json.hpp>
#include <utility>

#include "gdal_files.h"
#include "more_formats.h"

namespace tool {
namespace {

constexpr std::array kRead{".gpkg", ".shp", ".fgb", ".topojson", ".dxf"};

struct GeometryDestroyer {
  void operator()(OGRGeometryH geometry) const { OGR_G_DestroyGeometry(geometry); }
};
using Geometry = std::unique_ptr<void, GeometryDestroyer>;

struct FeatureDestroyer {
  void operator()(OGRFeatureH feature) const { OGR_F_Destroy(feature); }
};
using GdalFeature = std::unique_ptr<void, FeatureDestroyer>;

void AddPolygon(OGRGeometryH polygon, Parts& parts) {
  std::vector<Ring> rings;
  for (int i = 0; i < OGR_G_GetGeometryCount(polygon); ++i) {
    OGRGeometryH ring = OGR_G_GetGeometryRef(polygon, i);
    rings.emplace_back(static_cast<std::size_t>(OGR_G_GetPointCount(ring)));
    if (rings.back().empty()) continue;
    constexpr int stride = sizeof(Point);
    OGR_G_GetPoints(ring, &rings.back().front().x, stride, &rings.back().front().y, stride, nullptr,
                    0);
  }
  parts.AddPolygon(std::move(rings));
}

void AddGeometry(OGRGeometryH geometry, Parts& parts) {
  const OGRwkbGeometryType type = wkbFlatten(OGR_G_GetGeometryType(geometry));
  if (OGR_G_IsEmpty(geometry) != 0) {
    parts.RefuseEmpty(OGRGeometryTypeToName(type));
  } else if (OGR_GT_IsSubClassOf(type, wkbGeometryCollection) != 0 ||
             OGR_GT_IsSubClassOf(type, wkbPolyhedralSurface) != 0) {
    for (int i = 0; i < OGR_G_GetGeometryCount(geometry); ++i) {
      AddGeometry(OGR_G_GetGeometryRef(geometry, i), parts);
    }
  } else if (type == wkbPolygon || type == wkbTriangle) {
    AddPolygon(geometry, parts);
  } else if (OGR_GT_IsSubClassOf(type, wkbCurvePolygon) != 0) {
    const Geometry straight(OGR_G_GetLinearGeometry(geometry, 0, nullptr));
    AddPolygon(straight.get(), parts);
  } else {
    parts.RefuseType(OGRGeometryTypeToName(type));
  }
}

std::string ValueOf(OGRFeatureH feature, int field, OGRFieldDefnH definition) {
  if (OGR_F_IsFieldSetAndNotNull(feature, field) == 0) return "null";
  const OGRFieldSubType subtype = OGR_Fld_GetSubType(definition);
  const char* text = OGR_F_GetFieldAsString(feature, field);
  switch (OGR_Fld_GetType(definition)) {
    case OFTInteger:
      if (subtype == OFSTBoolean) return OGR_F_GetFieldAsInteger(feature, field) ? "true" : "false";
      return std::to_string(OGR_F_GetFieldAsInteger(feature, field));
    case OFTInteger64:
      return std::to_string(OGR_F_GetFieldAsInteger64(feature, field));
    case OFTReal:
      return nlohmann::json(OGR_F_GetFieldAsDouble(feature, field)).dump();
    default:
      return subtype == OFSTJSON && nlohmann::json::accept(text) ? text : Quoted(text);
  }
}

Attributes AttributesOf(OGRFeatureH feature, OGRFeatureDefnH fields, bool has_ids) {
  Attributes attributes;
  for (int i = 0; i < OGR_FD_GetFieldCount(fields); ++i) {
    OGRFieldDefnH definition = OGR_FD_GetFieldDefn(fields, i);
    attributes.properties.push_back(
        {OGR_Fld_GetNameRef(definition), ValueOf(feature, i, definition)});
  }
  const GIntBig id = OGR_F_GetFID(feature);
  if (has_ids && id != OGRNullFID) attributes.id = std::to_string(id);
  return attributes;
}

std::string CrsOf(OGRLayerH layer) {
  OGRSpatialReferenceH crs = OGR_L_GetSpatialRef(layer);
  if (crs == nullptr) return "";
  constexpr const char* options[] = {"FORMAT=WKT2_2019", nullptr};
  char* text = nullptr;
  std::string all;
  if (OSRExportToWktEx(crs, &text, options) == OGRERR_NONE) all = text;
  CPLFree(text);
  return all;
}

void ReadLayer(OGRLayerH layer, const std::function<void()>& advance, Gatherer& gatherer) {
  // Where the format itself numbers features, the numbers are no ids.
  const bool has_ids = *OGR_L_GetFIDColumn(layer) != '\0';
  OGRFeatureDefnH fields = OGR_L_GetLayerDefn(layer);
  OGR_L_ResetReading(layer);
  while (const GdalFeature feature{OGR_L_GetNextFeature(layer)}) {
    Parts parts;
    OGRGeometryH geometry = OGR_F_GetGeometryRef(feature.get());
    if (geometry != nullptr) {
      AddGeometry(geometry, parts);
    } else {
      parts.Refuse("no geometry");
    }
    gatherer.Add(AttributesOf(feature.get(), fields, has_ids), std::move(parts));
    advance();
  }
}

}  // namespace

bool ReadsMore(const std::string& extension) {
  return std::find(kRead.begin(), kRead.end(), extension) != kRead.end();
}

std::string MoreRead() {
  std::string all;
  for (const char* extension : kRead) all += std::string(", ") + extension;
  return all;
}

void ReadMore(const std::string& file, std::size_t size, const Advance& advance,
              Gatherer& gatherer) {
  GDALAllRegister();
  // A closed line of a drawing bounds an area.
  CPLSetConfigOption("DXF_CLOSED_LINE_AS_POLYGON", "YES");
  constexpr const char* drivers[] = {"GPKG", "ESRI Shapefile", "FlatGeobuf", "TopoJSON",
                                     "DXF",  nullptr};
  const GdalWords words;
  const Dataset dataset(
      GDALOpenEx(file.c_str(), GDAL_OF_VECTOR | GDAL_OF_VERBOSE_ERROR, drivers, nullptr, nullptr));
  if (!dataset) throw UnreadableFile("cannot be read: " + words.Text());
  std::size_t count = 0;
  const int layers = GDALDatasetGetLayerCount(dataset.get());
  for (int i = 0; i < layers; ++i) {
    const GIntBig features = OGR_L_GetFeatureCount(GDALDatasetGetLayer(dataset.get(), i), 0);
    count += static_cast<std::size_t>(std::max<GIntBig>(features, 0));
  }
  const std::size_t share = size / std::max<std::size_t>(count, 1);
  std::string crs;
  for (int i = 0; i < layers; ++i) {
    OGRLayerH layer = GDALDatasetGetLayer(dataset.get(), i);
    const std::string own = CrsOf(layer);
    if (!crs.empty() && !own.empty() && !IsSameCrs(crs, own)) {
      throw UnreadableFile("has layers in " + CrsName(crs) + " and in " + CrsName(own));
    }
    if (crs.empty()) crs = own;
    ReadLayer(
        layer, [&] { advance(share); }, gatherer);
  }
  if (!words.Text().empty()) gatherer.PassOver(words.Text());
  gatherer.SetCrs(std::move(crs));
}

}  // namespace tool

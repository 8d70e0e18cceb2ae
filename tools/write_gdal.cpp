// Files by GDAL from items (more_formats.h).
#include <ogr_api.h>
#include <ogr_srs_api.h>

#include <algorithm>
#include <filesystem>
#include <iostream>
#include <nlohmann/json.hpp>
#include <stdexcept>

#include "gdal_files.h"
#include "more_formats.h"

namespace tool {
namespace {

using Json = nlohmann::json;

struct Format {
  const char* extension;
  const char* driver;
  bool has_ids;     // of the features' own
  bool has_fields;  // for any properties
};

constexpr Format kWritten[] = {{".gpkg", "GPKG", true, true},
                               {".shp", "ESRI Shapefile", false, true},
                               {".fgb", "FlatGeobuf", false, true},
                               {".dxf", "DXF", false, false}};

const Format* FormatFor(const std::string& extension) {
  const auto found = std::find_if(std::begin(kWritten), std::end(kWritten),
                                  [&](const Format& f) { return f.extension == extension; });
  return found != std::end(kWritten) ? found : nullptr;
}

// The narrowest type that holds all values of a field, and the values of one item by it.
struct Field {
  std::string name;
  bool whole = true;
  bool number = true;
  bool truth = true;
  bool list = false;
  bool held = false;

  void Hold(const Json& value) {
    if (value.is_null()) return;
    held = true;
    whole = whole && value.is_number_integer() &&
            !(value.is_number_unsigned() && value.get<std::uint64_t>() >> 63 != 0);
    number = number && value.is_number();
    truth = truth && value.is_boolean();
    list = list || value.is_structured();
  }

  OGRFieldType Type() const {
    if (!held) return OFTString;
    if (truth) return OFTInteger;
    if (whole) return OFTInteger64;
    return number ? OFTReal : OFTString;
  }

  OGRFieldSubType Subtype() const {
    if (Type() == OFTInteger) return OFSTBoolean;
    return list ? OFSTJSON : OFSTNone;
  }
};

std::vector<Field> FieldsOf(const std::vector<Item>& items, bool with_ids) {
  std::vector<Field> fields;
  const auto hold = [&](const std::string& name, const std::string& value) {
    auto found = std::find_if(fields.begin(), fields.end(),
                              [&](const Field& field) { return field.name == name; });
    if (found == fields.end()) found = fields.insert(found, Field{name});
    found->Hold(Json::parse(value));
  };
  for (const Item& item : items) {
    for (const Property& property : item.attributes.properties) hold(property.name, property.value);
  }
  const bool has_field = std::any_of(fields.begin(), fields.end(),
                                     [](const Field& field) { return field.name == "id"; });
  for (const Item& item : items) {
    const std::string& id = item.attributes.id;
    if (with_ids && !has_field && !id.empty()) hold("id", id);
  }
  return fields;
}

void SetField(OGRFeatureH feature, int number, const Field& field, const std::string& text) {
  const Json value = Json::parse(text);
  if (value.is_null()) return OGR_F_SetFieldNull(feature, number);
  switch (field.Type()) {
    case OFTInteger:
      return OGR_F_SetFieldInteger(feature, number, value.get<bool>() ? 1 : 0);
    case OFTInteger64:
      return OGR_F_SetFieldInteger64(feature, number, value.get<GIntBig>());
    case OFTReal:
      return OGR_F_SetFieldDouble(feature, number, value.get<double>());
    default:
      return OGR_F_SetFieldString(
          feature, number, value.is_string() ? value.get<std::string>().c_str() : text.c_str());
  }
}

OGRGeometryH GeometryOf(const Item& item, Show show) {
  OGRGeometryH all = OGR_G_CreateGeometry(wkbMultiPolygon);
  for (const Polygon& polygon : PolygonsOf(item, show)) {
    OGRGeometryH part = OGR_G_CreateGeometry(wkbPolygon);
    for (const Ring& ring : RingsOf(polygon)) {
      OGRGeometryH line = OGR_G_CreateGeometry(wkbLinearRing);
      for (const Point& p : ring) OGR_G_AddPoint_2D(line, p.x, p.y);
      OGR_G_AddPoint_2D(line, ring.front().x, ring.front().y);
      OGR_G_AddGeometryDirectly(part, line);
    }
    OGR_G_AddGeometryDirectly(all, part);
  }
  return all;
}

// A feature of a layer; what GDAL refuses shows in its words.
class LayerWriter {
 public:
  LayerWriter(OGRLayerH layer, const Format& format, const std::vector<Item>& items)
      : layer_(layer), format_(format) {
    if (!format.has_fields) {  // but those that it has itself
      fields_.push_back({"Layer"});
      return;
    }
    fields_ = FieldsOf(items, !HasWholeIds(items));
    if (fields_.empty()) fields_.push_back({"name"});
    for (const Field& field : fields_) {
      OGRFieldDefnH definition = OGR_Fld_Create(field.name.c_str(), field.Type());
      OGR_Fld_SetSubType(definition, field.Subtype());
      failed_ = OGR_L_CreateField(layer, definition, 1) != OGRERR_NONE || failed_;
      OGR_Fld_Destroy(definition);
    }
  }

  void Add(const Item& item, Show show) {
    OGRFeatureH feature = OGR_F_Create(OGR_L_GetLayerDefn(layer_));
    for (std::size_t i = 0; i < fields_.size(); ++i) {
      const std::string* value = ValueOf(item, fields_[i]);
      const int number = format_.has_fields ? static_cast<int>(i)
                                            : OGR_F_GetFieldIndex(feature, fields_[i].name.c_str());
      if (value != nullptr) SetField(feature, number, fields_[i], *value);
    }
    if (ids_) OGR_F_SetFID(feature, Json::parse(item.attributes.id).get<GIntBig>());
    OGR_F_SetGeometryDirectly(feature, GeometryOf(item, show));
    failed_ = OGR_L_CreateFeature(layer_, feature) != OGRERR_NONE || failed_;
    OGR_F_Destroy(feature);
  }

  bool HasFailed() const { return failed_; }

 private:
  // Can the format keep the ids, which differ, as its own?
  bool HasWholeIds(const std::vector<Item>& items) {
    std::vector<std::string> seen;
    seen.reserve(items.size());
    for (const Item& item : items) seen.push_back(item.attributes.id);
    std::sort(seen.begin(), seen.end());
    const bool differ = std::adjacent_find(seen.begin(), seen.end()) == seen.end();
    ids_ = format_.has_ids && differ && std::all_of(seen.begin(), seen.end(), [](const auto& id) {
             return !id.empty() && id.size() < 19 &&
                    id.find_first_not_of("0123456789") == std::string::npos;
           });
    return ids_;
  }

  static const std::string* ValueOf(const Item& item, const Field& field) {
    const Property* property = FindProperty(item.attributes, field.name);
    if (property != nullptr) return &property->value;
    const std::string& id = item.attributes.id;
    return field.name == "id" && !id.empty() ? &id : nullptr;
  }

  OGRLayerH layer_;
  const Format& format_;
  std::vector<Field> fields_;
  bool ids_ = false;
  bool failed_ = false;
};

}  // namespace

bool WritesMore(const std::string& extension) {
  return FormatFor(extension) != nullptr;
}

std::string MoreWritten() {
  std::string all;
  for (const Format& f : kWritten) all += std::string(", ") + f.extension;
  return all;
}

void WriteMore(const std::string& output, const std::vector<Item>& items, Show show,
               const std::string& crs) {
  GDALAllRegister();
  const Format& format = *FormatFor(Extension(output));
  const GdalWords words;
  const auto fail = [&] {
    throw std::runtime_error(output + ": cannot be written: " + words.Text());
  };
  GDALDriverH driver = GDALGetDriverByName(format.driver);
  std::error_code ignored;
  if (std::filesystem::exists(output, ignored)) GDALDeleteDataset(driver, output.c_str());
  Dataset dataset(GDALCreate(driver, output.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
  if (!dataset) fail();
  OGRSpatialReferenceH system = crs.empty() ? nullptr : OSRNewSpatialReference(nullptr);
  if (system != nullptr) OSRSetFromUserInput(system, crs.c_str());
  const std::string name = std::filesystem::path(output).stem().string();
  OGRLayerH layer =
      GDALDatasetCreateLayer(dataset.get(), name.c_str(), system, wkbMultiPolygon, nullptr);
  if (system != nullptr) OSRRelease(system);
  if (layer == nullptr) fail();
  const bool at_once = GDALDatasetTestCapability(dataset.get(), ODsCTransactions) != 0;
  if (at_once) GDALDatasetStartTransaction(dataset.get(), 0);
  LayerWriter writer(layer, format, items);
  for (const Item& item : items) writer.Add(item, show);
  const bool kept = !at_once || GDALDatasetCommitTransaction(dataset.get()) == OGRERR_NONE;
  if (writer.HasFailed() || !kept) fail();
  CPLErrorReset();
  dataset.reset();
  if (CPLGetLastErrorType() >= CE_Failure) fail();
  if (!words.Text().empty()) std::cerr << output << ": " << words.Text() << '\n';
}

}  // namespace tool

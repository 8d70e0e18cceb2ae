// From readers of formats to an input.
#pragma once

#include <cmath>
#include <string>
#include <utility>

#include "input.h"
#include "parts.h"

namespace tool {

// Gathers the features of one file, one geometry after the other.
class Gatherer {
 public:
  explicit Gatherer(Input& input) : input_(input) {}

  void Add(Attributes attributes, Parts parts) {
    Feature& feature = Begin(NameOf(attributes));
    feature.attributes = std::move(attributes);
    feature.polygons = std::move(parts.polygons);
    for (Parts::Refused& part : parts.refused) {
      Refuse(part.is_polygon ? PlaceOf(feature, part.polygon) : feature.Label(),
             std::move(part.reason), part.is_polygon ? Lost("polygon", std::nan("")) : kNothing,
             feature.number);
    }
  }

  // A feature of which nothing can be read.
  void AddBroken(std::string name, const std::string& where, std::string reason) {
    const Feature& feature = Begin(std::move(name));
    Refuse(feature.Label() + where, std::move(reason), "what it holds", feature.number);
  }

  // `feature` is 0 for what is part of none.
  void Refuse(std::string place, std::string reason, std::string lost, std::size_t feature = 0) {
    input_.refusals.push_back(
        {input_.file, std::move(place), std::move(reason), std::move(lost), feature});
  }

  // What the file names as its coordinate reference system.
  void SetCrs(std::string crs) { input_.crs = std::move(crs); }

  void PassOver(const std::string& what) {
    if (!what.empty()) input_.passed_over.insert(what);
  }

 private:
  Feature& Begin(std::string name) {
    input_.features.push_back({input_.file, input_.features.size() + 1, std::move(name), {}, {}});
    return input_.features.back();
  }

  Input& input_;
};

// @return false for TopoJSON, of which nothing is read. Throws UnreadableFile.
bool ReadGeoJson(const std::string& text, const Advance& advance, Gatherer& gatherer);

}  // namespace tool

// Any bytes, read by the host program as a file of either format. What is no such file is refused
// in words; what was read is the same when it is written, in both formats, and read again; and no
// text costs the geometry behind it anything.
#include <iostream>
#include <sstream>

#include "bytes.h"
#include "input.h"
#include "output.h"

namespace {

tool::Input Read(const std::string& text) {
  static std::stringbuf buffer;
  buffer.str(text);
  std::cin.rdbuf(&buffer);
  return tool::ReadInput("-", 0, [](std::size_t) {});
}

std::vector<tool::Item> ItemsOf(const tool::Input& input) {
  std::vector<tool::Item> items;
  for (const tool::Feature& feature : input.features) {
    for (std::size_t i = 0; i < feature.polygons.size(); ++i) {
      const tool::Polygon& polygon = feature.polygons[i];
      if (!tool::IsFinite(polygon)) continue;
      const tool::Region region(tool::RingsOf(polygon));  // never refused
      if (!region.IsEmpty())
        items.push_back({feature.name, feature.number, i + 1, feature.attributes, region, {}});
    }
  }
  return items;
}

template <class Write>
std::string FaultsOf(const std::vector<tool::Item>& items, bool named, Write write) {
  std::ostringstream out;
  write(out, items, tool::Show::kRegion);
  const tool::Input again = Read(out.str());
  if (again.features.size() != items.size() || !again.refusals.empty()) return "a feature is lost";
  for (std::size_t i = 0; i < items.size(); ++i) {
    if (again.features[i].polygons != items[i].region.Polygons()) return "a point is not the same";
    if (!named) continue;
    const tool::Attributes& given = items[i].attributes;
    if (again.features[i].attributes.id != given.id) return "an id is not the same";
    if (!given.properties.empty() && again.features[i].attributes.properties != given.properties) {
      return "a property is not the same";
    }
  }
  return "";
}

std::string FaultsBehind(const std::string& text, std::size_t features) {
  const tool::Ring square{{0, 0}, {4, 0}, {4, 4}, {0, 4}};
  const tool::Input input = Read(text + "\nPOLYGON ((0 0, 4 0, 4 4, 0 4, 0 0))");
  if (input.features.size() != features + 1) return "text swallows geometries";
  return input.features.back().polygons == std::vector<tool::Polygon>{{square, {}}}
             ? ""
             : "text changes the geometry behind it";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::vector<tool::Item> items;
  const std::string text(data, data + size);
  try {
    const tool::Input input = Read(text);
    items = ItemsOf(input);
    const std::size_t first = text.find_first_not_of(" \t\r\n\xef\xbb\xbf");
    if (first != std::string::npos && text[first] != '{') {
      fuzz::Expect(FaultsBehind(text, input.features.size()));
    }
  } catch (const tool::UnreadableFile&) {
  }
  if (items.empty()) return 0;
  const auto write_geojson = [](std::ostream& out, const auto& all, tool::Show show) {
    tool::WriteGeoJson(out, all, show, "");
  };
  fuzz::Expect(FaultsOf(items, true, write_geojson));
  fuzz::Expect(FaultsOf(items, false, tool::WriteWkt));
  return 0;
}

#include "attributes.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace tool {

const Property* FindProperty(const Attributes& attributes, std::string_view name) {
  const auto found = std::find_if(attributes.properties.begin(), attributes.properties.end(),
                                  [&](const Property& property) { return property.name == name; });
  return found != attributes.properties.end() ? &*found : nullptr;
}

std::string PlainText(const std::string& value) {
  if (value.empty() || value.front() != '"') return value;
  return nlohmann::json::parse(value).get<std::string>();
}

std::string Quoted(std::string_view text) {
  return nlohmann::json(text).dump(-1, ' ', false, nlohmann::json::error_handler_t::replace);
}

std::string NameOf(const Attributes& attributes) {
  const auto is_plain = [](const std::string& value) {
    return value != "null" && value.front() != '[' && value.front() != '{';
  };
  for (const char* key : {"name", "NAME", "Name", "title", "id"}) {
    const Property* property = FindProperty(attributes, key);
    if (property != nullptr && is_plain(property->value)) return PlainText(property->value);
  }
  return attributes.id.empty() ? "" : PlainText(attributes.id);
}

Attributes Agreed(const std::vector<const Attributes*>& all) {
  if (all.empty()) return {};
  Attributes agreed = *all.front();
  for (std::size_t i = 1; i < all.size(); ++i) {
    if (agreed.properties.empty()) break;
    std::erase_if(agreed.properties, [&](const Property& property) {
      const Property* other = FindProperty(*all[i], property.name);
      return other == nullptr || other->value != property.value;
    });
  }
  if (all.size() > 1) agreed.id.clear();
  return agreed;
}

}  // namespace tool

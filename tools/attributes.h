// What a feature has beside its geometry: its properties, in their order, and its id. Values are
// kept as JSON, so that they come out as they went in.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tool {

struct Property {
  std::string name;
  std::string value;  // JSON
  friend bool operator==(const Property&, const Property&) = default;
};

struct Attributes {
  std::vector<Property> properties;
  std::string id;  // JSON; may be empty
};

// The property of this name, or null.
const Property* FindProperty(const Attributes& attributes, std::string_view name);

// A value as a user writes it: of a text what is within its quotes.
std::string PlainText(const std::string& value);

// A text as a value.
std::string Quoted(std::string_view text);

// How messages call a feature: a property called so in any of the usual spellings, else its id;
// may be empty.
std::string NameOf(const Attributes& attributes);

// What a feature has that is made of several: the properties in which all agree, and the id
// where it is of one alone.
Attributes Agreed(const std::vector<const Attributes*>& all);

}  // namespace tool

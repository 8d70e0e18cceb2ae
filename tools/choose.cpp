#include "choose.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace tool {
namespace {

using Names = std::set<std::string, std::less<>>;

// What a feature is chosen by: its name, or its value of a field.
std::string KeyOf(const Feature& feature, std::string_view field) {
  if (field.empty()) return feature.name;
  const Property* property = FindProperty(feature.attributes, field);
  return property != nullptr ? PlainText(property->value) : "";
}

Names KeysOf(const std::vector<Input>& inputs, std::string_view field) {
  Names keys;
  for (const Input& input : inputs) {
    for (const Feature& feature : input.features) keys.insert(KeyOf(feature, field));
  }
  keys.erase("");
  return keys;
}

bool HasField(const std::vector<Input>& inputs, std::string_view field) {
  return std::any_of(inputs.begin(), inputs.end(), [&](const Input& input) {
    return std::any_of(input.features.begin(), input.features.end(), [&](const Feature& feature) {
      return FindProperty(feature.attributes, field) != nullptr;
    });
  });
}

std::string_view Trimmed(std::string_view text) {
  const std::size_t first = text.find_first_not_of(' ');
  if (first == std::string_view::npos) return {};
  return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

// Of the name that has the most.
std::ptrdiff_t MostCommas(const Names& names) {
  std::ptrdiff_t most = 0;
  for (const std::string& name : names) {
    most = std::max(most, std::count(name.begin(), name.end(), ','));
  }
  return most;
}

// Takes the first name from a list: the longest that ends at a comma, or at the list's end, and
// is there; else what stands before the first comma.
std::string TakeName(std::string_view& list, const Names& names, std::ptrdiff_t most_commas) {
  const std::size_t first = std::min(list.find(','), list.size());
  std::size_t taken = first;
  std::size_t end = first;
  for (std::ptrdiff_t commas = 0; commas <= most_commas; ++commas) {
    if (names.find(Trimmed(list.substr(0, end))) != names.end()) taken = end;
    if (end == list.size()) break;
    end = std::min(list.find(',', end + 1), list.size());
  }
  std::string name(Trimmed(list.substr(0, taken)));
  list.remove_prefix(std::min(taken + 1, list.size()));
  return name;
}

struct Choice {
  std::string_view field;  // empty for the name
  Names keys;
};

// What one list chooses; what no feature has is added to `unknown`.
Choice ChoiceOf(std::string_view list, const std::vector<Input>& inputs,
                std::vector<std::string>& unknown) {
  Choice choice;
  const std::size_t equals = list.find('=');
  if (equals != std::string_view::npos && HasField(inputs, Trimmed(list.substr(0, equals)))) {
    choice.field = Trimmed(list.substr(0, equals));
    list.remove_prefix(equals + 1);
  }
  const Names known = KeysOf(inputs, choice.field);
  const std::ptrdiff_t most_commas = MostCommas(known);
  while (!list.empty()) {
    std::string key = TakeName(list, known, most_commas);
    if (known.count(key) != 0) {
      choice.keys.insert(std::move(key));
    } else {
      const std::string has = "no feature has the " + std::string(choice.field) + ' ';
      unknown.push_back((choice.field.empty() ? "no feature is called " : has) + key);
    }
  }
  return choice;
}

}  // namespace

std::vector<std::string> Choose(const std::vector<std::string>& lists, std::vector<Input>& inputs) {
  std::vector<std::string> unknown;
  std::vector<Choice> choices;
  choices.reserve(lists.size());
  for (const std::string& list : lists) choices.push_back(ChoiceOf(list, inputs, unknown));
  for (Input& input : inputs) {
    const auto is_left_out = [&](const Feature& feature) {
      return std::none_of(choices.begin(), choices.end(), [&](const Choice& choice) {
        return choice.keys.count(KeyOf(feature, choice.field)) != 0;
      });
    };
    std::erase_if(input.refusals, [&](const Refusal& refusal) {
      return refusal.feature != 0 && is_left_out(input.features[refusal.feature - 1]);
    });
    std::erase_if(input.features, is_left_out);
  }
  return unknown;
}

}  // namespace tool

#include "choose.h"

#include <algorithm>
#include <cstddef>
#include <set>
#include <string_view>
#include <utility>

namespace tool {
namespace {

using Names = std::set<std::string, std::less<>>;

Names NamesOf(const std::vector<Input>& inputs) {
  Names names;
  for (const Input& input : inputs) {
    for (const Feature& feature : input.features) {
      if (!feature.name.empty()) names.insert(feature.name);
    }
  }
  return names;
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

}  // namespace

std::vector<std::string> Choose(const std::vector<std::string>& lists, std::vector<Input>& inputs) {
  const Names names = NamesOf(inputs);
  const std::ptrdiff_t most_commas = MostCommas(names);
  Names chosen;
  std::vector<std::string> unknown;
  for (std::string_view list : lists) {
    while (!list.empty()) {
      std::string name = TakeName(list, names, most_commas);
      if (names.count(name) != 0) {
        chosen.insert(std::move(name));
      } else {
        unknown.push_back(std::move(name));
      }
    }
  }
  for (Input& input : inputs) {
    const auto is_left_out = [&](const Feature& feature) {
      return chosen.count(feature.name) == 0;
    };
    std::erase_if(input.refusals, [&](const Refusal& refusal) {
      return refusal.feature != 0 && is_left_out(input.features[refusal.feature - 1]);
    });
    std::erase_if(input.features, is_left_out);
  }
  return unknown;
}

}  // namespace tool

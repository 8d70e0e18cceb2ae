#include "tones.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <set>
#include <tuple>
#include <utility>

namespace tool {
namespace {

// (feature, feature), the smaller first; each feature at least with itself.
std::set<std::pair<std::size_t, std::size_t>> FindNeighbours(const std::vector<Item>& items,
                                                             double cell) {
  std::vector<std::tuple<double, double, std::size_t>> visits;
  for (const Item& item : items) {
    for (const Point& p : item.region.Vertices()) {
      visits.emplace_back(std::floor(p.x / cell), std::floor(p.y / cell), item.feature);
    }
  }
  std::sort(visits.begin(), visits.end());
  visits.erase(std::unique(visits.begin(), visits.end()), visits.end());
  std::set<std::pair<std::size_t, std::size_t>> neighbours;
  for (std::size_t i = 0; i < visits.size(); ++i) {
    const auto& [x, y, feature] = visits[i];
    neighbours.emplace(feature, feature);
    for (std::size_t k = i + 1; k < visits.size(); ++k) {
      const auto& [other_x, other_y, other] = visits[k];
      if (other_x != x || other_y != y) break;
      neighbours.emplace(feature, other);
    }
  }
  return neighbours;
}

}  // namespace

std::vector<std::size_t> ChooseTones(const std::vector<Item>& items, std::size_t tones,
                                     double cell) {
  std::map<std::size_t, std::vector<std::size_t>> earlier;
  for (const auto& [a, b] : FindNeighbours(items, cell)) {
    earlier[b];
    if (a < b) earlier[b].push_back(a);
  }
  std::map<std::size_t, std::size_t> tone_of;
  for (const auto& [feature, others] : earlier) {
    std::vector<bool> taken(tones, false);
    for (const std::size_t other : others) taken[tone_of[other]] = true;
    std::size_t tone = feature % tones;
    for (std::size_t i = 0; i < tones && taken[tone]; ++i) tone = (tone + 1) % tones;
    tone_of[feature] = tone;
  }
  std::vector<std::size_t> chosen;
  chosen.reserve(items.size());
  for (const Item& item : items) chosen.push_back(tone_of[item.feature]);
  return chosen;
}

}  // namespace tool

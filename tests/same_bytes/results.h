// What the library answers: hashes of the bytes of its answers, one for each group.
#pragma once

#include <cstdint>
#include <cstring>
#include <map>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace same_bytes {

/// As std::bit_cast, which the standard library for WebAssembly lacks.
template <class To, class From>
To BitCast(const From& from) {
  static_assert(sizeof(To) == sizeof(From));
  To to;
  std::memcpy(&to, &from, sizeof to);
  return to;
}

/// FNV-1a over 64-bit words (Fowler, Noll, Vo 1991). Every NaN counts as the same
/// number: its sign and payload are the compiler's choice.
class Hash {
 public:
  template <class Integer>
  requires std::is_integral_v<Integer> Hash& Add(Integer value) {
    const auto word = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
    for (int shift = 0; shift < 64; shift += 8) {
      state_ = (state_ ^ ((word >> shift) & 0xFF)) * 0x100000001B3u;
    }
    return *this;
  }
  Hash& Add(double value) { return Add(value == value ? BitCast<std::int64_t>(value) : kNaN); }
  template <class T>
  Hash& Add(const std::vector<T>& values) {
    Add(values.size());
    for (const T& value : values) Add(value);
    return *this;
  }

  [[nodiscard]] std::uint64_t Value() const { return state_; }

 private:
  static constexpr std::int64_t kNaN = 0x7FF8000000000000;

  std::uint64_t state_ = 0xCBF29CE484222325u;
};

class Results {
 public:
  /// @param each  keep a hash of every answer, not one of each group
  explicit Results(bool each) : each_(each) {}

  /// The group of an answer is its name up to the first number. Names have no spaces.
  void Add(const std::string& name, const Hash& hash) {
    const std::string group = each_ ? name : name.substr(0, name.find_first_of("0123456789") - 1);
    std::uint64_t& word = hashes_.try_emplace(group, Hash().Value()).first->second;
    word = Hash().Add(word).Add(hash.Value()).Value();
  }
  [[nodiscard]] const std::map<std::string, std::uint64_t>& Hashes() const { return hashes_; }

 private:
  bool each_;
  std::map<std::string, std::uint64_t> hashes_;
};

/// Through the flat interface: every country of the map, generated polygons, chains of
/// unions and differences. The inputs are hashed too, under names of their own.
void AddCountries(const std::string& dataFolder, Results& results);
void AddFamilies(Results& results);
void AddChains(Results& results);

/// The toolkit on seeded input.
void AddToolkit(Results& results);

}  // namespace same_bytes

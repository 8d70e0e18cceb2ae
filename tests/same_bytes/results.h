// What the library answers: a hash of the bytes of each group of answers.
#pragma once

#include <cstdint>
#include <cstring>
#include <iterator>
#include <map>
#include <string>
#include <type_traits>

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
  /// Numbers, records of doubles, and ranges of them.
  template <class... Values>
  void Add(const Values&... values) {
    (AddOne(values), ...);
  }
  [[nodiscard]] std::uint64_t Value() const { return state_; }

 private:
  template <class T>
  void AddOne(const T& value) {
    constexpr std::int64_t nan = 0x7FF8000000000000;
    if constexpr (std::is_same_v<T, double>) {
      AddOne(value == value ? BitCast<std::int64_t>(value) : nan);
    } else if constexpr (std::is_integral_v<T> || std::is_enum_v<T>) {
      const auto word = static_cast<std::uint64_t>(static_cast<std::int64_t>(value));
      for (int shift = 0; shift < 64; shift += 8) {
        state_ = (state_ ^ ((word >> shift) & 0xFF)) * 0x100000001B3u;
      }
    } else if constexpr (requires { std::size(value); }) {
      AddOne(std::size(value));
      for (const auto& one : value) AddOne(one);
    } else {
      double numbers[sizeof value / sizeof(double)];
      std::memcpy(numbers, &value, sizeof value);
      AddOne(numbers);
    }
  }

  std::uint64_t state_ = 0xCBF29CE484222325u;
};

using Hashes = std::map<std::string, Hash>;  // of groups of answers

/// Polygons of the map and generated ones, through the flat interface and as regions. The inputs
/// are hashed too, under names of their own.
void AddPolygons(const std::string& dataFolder, Hashes& hashes);

/// The toolkit on seeded input.
void AddToolkit(Hashes& hashes);

}  // namespace same_bytes

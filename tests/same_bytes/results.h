// What the library answers, a line for each group of answers: exact answers as a hash of their
// bytes; those that hang on the platform's sine, cosine, arc tangent or arc cosine as the
// numbers themselves.
#pragma once

#include <cstdint>
#include <cstdio>
#include <cstring>
#include <iterator>
#include <string>
#include <type_traits>
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

/// The numbers of a record that holds nothing but doubles.
template <class Record>
std::vector<double> DoublesOf(const Record& record) {
  std::vector<double> numbers(sizeof record / sizeof(double));
  std::memcpy(numbers.data(), &record, sizeof record);
  return numbers;
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
      AddOne(DoublesOf(value));
    }
  }

  std::uint64_t state_ = 0xCBF29CE484222325u;
};

using Lines = std::vector<std::string>;

inline std::string Hex(std::uint64_t word) {
  char text[20];
  std::snprintf(text, sizeof text, " %08x%08x", static_cast<unsigned>(word >> 32),
                static_cast<unsigned>(word & 0xFFFFFFFFu));
  return text;
}

/// "NAME HASH"
inline void AddExact(Lines& lines, const std::string& name, const Hash& hash) {
  lines.push_back(name + Hex(hash.Value()));
}
/// "NAME ~ BITS BITS ..."
inline void AddClose(Lines& lines, const std::string& name, const std::vector<double>& numbers) {
  lines.push_back(name + " ~");
  for (const double x : numbers) lines.back() += Hex(BitCast<std::uint64_t>(x));
}

/// Polygons of the map and generated ones, through the flat interface and as regions. The inputs
/// are hashed too, under names of their own.
void AddPolygons(const std::string& dataFolder, Lines& lines);

/// The toolkit on seeded input.
void AddToolkit(Lines& lines);

}  // namespace same_bytes

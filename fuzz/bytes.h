// Any bytes as a source of numbers; zeros when they are used up.
#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <stdexcept>
#include <string>

namespace fuzz {

/// Calls that change something, made and judged so far.
inline double steps = 0;

class Bytes {
 public:
  Bytes(const std::uint8_t* data, std::size_t size) : at_(data), end_(data + size) {}
  [[nodiscard]] bool Empty() const { return at_ == end_; }
  std::uint8_t Byte() { return Empty() ? std::uint8_t{0} : *at_++; }
  double Double() { return Number<double>(); }
  template <class T>
  T Number() {
    std::uint8_t raw[sizeof(T)];
    for (std::uint8_t& byte : raw) byte = Byte();
    T value{};
    std::memcpy(&value, raw, sizeof value);
    return value;
  }

 private:
  const std::uint8_t* at_;
  const std::uint8_t* end_;
};

/// What a judge has found in the last step. Only tests catch it: it ends a fuzzer.
struct Fault : std::runtime_error {
  using std::runtime_error::runtime_error;
};

inline void Expect(const std::string& fault) {
  ++steps;
  if (!fault.empty()) throw Fault(fault);
}

}  // namespace fuzz

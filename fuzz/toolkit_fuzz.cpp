// Any bytes as the numbers that one of the toolkit's laws is tried with.
#include "bytes.h"
#include "math/numbers.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const int law = bytes.Byte() % laws::kLaws;
  laws::Numbers numbers([&bytes] { return bytes.Number<std::uint64_t>(); });
  fuzz::Expect(laws::Holds(law, numbers) ? "" : "law " + std::to_string(law));
  return 0;
}

// Any bytes as the numbers of a trial of one of the toolkit's laws.
#include "bytes.h"
#include "math/trial.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  fuzz::Bytes bytes(data, size);
  const std::uint8_t which = bytes.Byte();
  laws::Trial trial([&bytes] { return bytes.Number<std::uint64_t>(); });
  const std::vector<laws::Law>& some = which % 2 == 0 ? laws::kValueLaws : laws::kQueryLaws;
  const laws::Law& law = some[which / 2 % some.size()];
  fuzz::Expect(law.holds(trial) ? "" : law.name);
  return 0;
}

// Any bytes, read as a session of calls of the flat interface. Every mesh that
// comes out is checked. Built for libFuzzer, or with replay.cpp as a program that
// runs the corpus.
#include "bytes.h"
#include "support/flat.h"
#include "support/mesh_checker.h"

namespace {

// Points of a lattice of 16 by 16, one byte each, so that everything touches; or,
// for every eighth contour, raw doubles.
support::Xyz ReadContour(fuzz::Bytes& bytes) {
  const std::uint8_t header = bytes.Byte();
  support::Xyz xyz;
  for (int n = header & 31; n > 0 && !bytes.Empty(); --n) {
    if (header >> 5 == 7) {
      const double x = bytes.Double();
      xyz.insert(xyz.end(), {x, bytes.Double(), 0.0});
    } else {
      const std::uint8_t point = bytes.Byte();
      xyz.insert(xyz.end(), {1.0 * (point & 15), 1.0 * (point >> 4), 0.0});
    }
  }
  return xyz;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  SetMainContour(0, nullptr);
  fuzz::Bytes bytes(data, size);
  while (!bytes.Empty()) {
    switch (bytes.Byte() % 5) {
      case 0:
        support::SetMain(ReadContour(bytes));
        break;
      case 1:
        support::AddHole(ReadContour(bytes));
        break;
      case 2:
        Union();
        break;
      case 3:
        Substruct();
        break;
      default:
        if (Triangulate() == 1) fuzz::Expect(support::CheckFlatMesh(support::Read()));
    }
  }
  return 0;
}

// Any bytes, read as a session of the twelve calls of the flat interface. After each everything
// is read back, and judged against what the header promises of that call.
#include <cmath>
#include <numeric>

#include "bytes.h"
#include "support/flat.h"

namespace {

// Points of a lattice of 16 by 16, one byte each, so that everything touches; or, for every
// eighth contour, raw doubles. Another eighth ends with two doubles that make no point.
support::Xyz ReadContour(fuzz::Bytes& bytes) {
  const std::uint8_t header = bytes.Byte();
  support::Xyz xyz;
  for (int n = header & 31; n > 0 && !bytes.Empty(); --n) {
    if (header >> 5 == 7) {
      xyz.insert(xyz.end(), {bytes.Double(), bytes.Double(), std::nan("")});
    } else {
      const std::uint8_t point = bytes.Byte();
      xyz.insert(xyz.end(), {1.0 * (point & 15), 1.0 * (point >> 4), 0.0});
    }
  }
  if (header >> 5 == 6) xyz.insert(xyz.end(), {7.0, 7.0});
  return xyz;
}

// What there must be by the answers so far.
struct Model {
  bool main = false;
  bool mesh = false;
  int queue = 0;
};

// Makes a call and judges its answer, what it changes, and what stays as it was.
std::string FaultsOf(int call, fuzz::Bytes& bytes, Model& model) {
  const support::ReadBack before = support::Read();
  const bool idle = model.queue == 0;
  const int answer = call == 0   ? support::SetMain(ReadContour(bytes))
                     : call == 1 ? support::AddHole(ReadContour(bytes))
                     : call == 2 ? Union()
                     : call == 3 ? Substruct()
                                 : Triangulate();
  const support::ReadBack now = support::Read();
  if (answer != 0 && answer != 1) return "no answer";
  if (call == 0) {
    model = {answer == 1, false, 0};
  } else if (call == 1) {
    model.queue += answer;
  } else if (call == 2 || call == 3) {
    if (answer != (idle || model.main ? 1 : 0)) return "a queue is done if there is a polygon";
    if (now.edges != before.edges || now.faces != before.faces) return "the old mesh is gone";
    model.queue = answer == 1 ? 0 : model.queue;
  } else if (answer == 1) {
    if (now.vertices != before.vertices) return "cutting moves a vertex";
    const std::string faults = support::CheckFlatMesh(now);
    if (!faults.empty()) return faults;
    model.mesh = true;
  }
  const bool changes = call == 0 || (call == 4 && answer == 1) || (call != 1 && !idle);
  if (!changes && now != before) return "a failure, or a contour queued, shows";
  if (now.counted != (model.main && model.mesh ? 1 : 0)) return "a mesh that should not be";
  if (!model.main && now.vertexCount > 0) return "an old polygon is left";
  const int sum = std::accumulate(now.contourSize.begin(), now.contourSize.end(), 0);
  const bool beyond = GetContourSize(GetContourCount()) != -1 || GetContourIndex(-1) != -1;
  return sum != now.vertexCount || beyond ? "the contours are not all vertices" : "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  SetMainContour(0, nullptr);
  fuzz::Bytes bytes(data, size);
  Model model;
  while (!bytes.Empty()) fuzz::Expect(FaultsOf(bytes.Byte() % 5, bytes, model));
  return 0;
}

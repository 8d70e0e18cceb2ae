// Any bytes, read as a session of the twelve calls of the flat interface. After each everything
// is read back, and judged against what the header promises of that call.
#include <algorithm>
#include <cmath>

#include "bytes.h"
#include "support/flat.h"
#include "support/mesh_checker.h"

namespace {

using support::ReadBack;

enum Call { kSetMain, kSetHole, kUnion, kSubtract, kTriangulate, kCalls };

// Points of a lattice of 16 by 16, one byte each, so that everything touches; or,
// for every eighth contour, raw doubles.
support::Xyz ReadContour(fuzz::Bytes& bytes) {
  const std::uint8_t header = bytes.Byte();
  support::Xyz xyz;
  for (int n = header & 31; n > 0 && !bytes.Empty(); --n) {
    if (header >> 5 == 7) {
      const double x = bytes.Double();
      xyz.insert(xyz.end(), {x, bytes.Double(), std::nan("")});
    } else {
      const std::uint8_t point = bytes.Byte();
      xyz.insert(xyz.end(), {1.0 * (point & 15), 1.0 * (point >> 4), 0.0});
    }
  }
  if (header >> 5 == 6) xyz.insert(xyz.end(), {7.0, 7.0});  // which make no point
  return xyz;
}

int Do(Call call, fuzz::Bytes& bytes) {
  switch (call) {
    case kSetMain:
      return support::SetMain(ReadContour(bytes));
    case kSetHole:
      return support::AddHole(ReadContour(bytes));
    case kUnion:
      return Union();
    case kSubtract:
      return Substruct();
    default:
      return Triangulate();
  }
}

std::string FaultsOfQueries(const ReadBack& r) {
  const int contours = GetContourCount();
  int sum = 0;
  for (const int size : r.contourSize) sum += size;
  for (const int index : r.contourIndex) {
    if (index < 0 || index >= r.vertexCount) return "a contour begins nowhere";
  }
  if (sum != r.vertexCount) return "the contours are not all vertices";
  if (!std::all_of(r.vertices.begin(), r.vertices.end(), [](double c) { return std::isfinite(c); }))
    return "a vertex is not finite";
  for (const int none : {-1, contours}) {
    if (GetContourIndex(none) != -1 || GetContourSize(none) != -1) return "a contour too many";
  }
  int count = 0;
  return GetCounts(&count, &count, nullptr) + GetVertices(nullptr) + GetEdges(nullptr) +
                     GetFaces(nullptr) ==
                 0
             ? ""
             : "a null pointer is taken";
}

// What a call may change, and what stays as it was.
std::string FaultsOf(Call call, int answer, ReadBack before, const ReadBack& now) {
  if (answer != 0 && answer != 1) return "no answer";
  const bool fails = answer == 0;
  if (call == kSetMain) {
    if (now.faceCount > 0 || (fails && now.vertexCount > 0)) return "an old polygon shows through";
  } else if (call == kUnion || call == kSubtract) {
    if (now.edges != before.edges || now.faces != before.faces) return "the old mesh is gone";
  } else if (call == kTriangulate && !fails) {
    if (now.vertices != before.vertices) return "cutting moves a vertex";
    return support::CheckFlatMesh(now);
  } else if (now != before) {
    return "a failure, or a contour queued, shows";
  }
  return "";
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  SetMainContour(0, nullptr);
  fuzz::Bytes bytes(data, size);
  ReadBack before = support::Read();
  while (!bytes.Empty()) {
    const Call call = static_cast<Call>(bytes.Byte() % kCalls);
    const int answer = Do(call, bytes);
    ReadBack now = support::Read();
    fuzz::Expect(FaultsOfQueries(now));
    fuzz::Expect(FaultsOf(call, answer, before, now));
    before = std::move(now);
  }
  return 0;
}

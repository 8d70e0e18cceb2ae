// Unions and differences by the library and by its peers, on the same coordinates:
// one line for each entry (harness.h says what is in it).
//
//   bench_compare_booleans [--quick] [FAMILY]
#include <string>
#include <vector>

#include "areas.h"
#include "harness.h"
#include "peers/combiners.h"

namespace {

using namespace bench;

const std::vector<Engine<BooleanWork>> kOurs = {
    {"operation", ZelvanOperation},
    {"all calls", ZelvanCalls},
};

const Engine<BooleanWork> kClipper = {"Clipper",
#ifdef ZELVAN_BENCH_CLIPPER
                                      ClipperBoolean
#else
                                      nullptr
#endif
};

const Engine<BooleanWork> kGeos = {"GEOS",
#ifdef ZELVAN_BENCH_GEOS
                                   GeosBoolean
#else
                                   nullptr
#endif
};

const Engine<BooleanWork> kCgal = {"CGAL",
#ifdef ZELVAN_BENCH_CGAL
                                   CgalBoolean
#else
                                   nullptr
#endif
};

void Compare(Harness& harness, const std::string& family, long long size, const BooleanWork& work,
             const std::vector<Engine<BooleanWork>>& peers, double area = 0) {
  std::size_t vertices = 0;
  for (const Xyz& contour : work.contours) vertices += VertexCount(contour);
  const Expected expected{area, GridTolerance(work.contours)};
  std::vector<Engine<BooleanWork>> engines = kOurs;
  for (const auto& peer : peers) {
    if (peer.make != nullptr) engines.push_back(peer);
  }
  for (const auto& engine : engines) {
    harness.Measure({"booleans", family, size, vertices, engine.name}, expected,
                    [&] { return engine.make(work); });
  }
}

void CompareBoth(Harness& harness, const std::string& family, int n, const Xyz& a, const Xyz& b,
                 const std::vector<Engine<BooleanWork>>& peers) {
  Compare(harness, family + ", union", n, {Operation::kUnion, {a, b}}, peers);
  Compare(harness, family + ", difference", n, {Operation::kDifference, {a, b}}, peers);
}

void CompareCoasts(Harness& harness, int largest) {
  for (int n = 1000; n <= largest; n *= 10) {
    const Xyz coast = Coast(n);
    CompareBoth(harness, "coast, shifted", n, coast, Moved(coast, 1e3, 2e3), {kClipper, kGeos});
  }
  for (int n = 1000; n <= largest; n *= 10) {
    CompareBoth(harness, "two coasts", n, Coast(n), SeededCoast(n, 7), {kClipper, kGeos});
  }
}

void CompareStars(Harness& harness, int largest) {
  for (int n = 10000; n <= largest; n *= 10) {
    const Xyz star = Star(n);
    CompareBoth(harness, "stars", n, star, Turned(star, 0.5), {kCgal, kClipper});
  }
}

void CompareHoles(Harness& harness, int largest) {
  for (int k : {10, 30, 100}) {
    if (k > largest) continue;
    BooleanWork work{Operation::kDifference, Holes(k)};
    const double side = 2.0 * k + 1;
    work.contours.insert(work.contours.begin(), Box(0, 0, side, side));
    Compare(harness, "k x k holes", k, work, {kClipper, kGeos}, side * side - k * k);
  }
}

void CompareBars(Harness& harness, int k) {
  const double side = 2.0 * k - 1;
  Compare(harness, "k bars and k across", k, {Operation::kUnion, Bars(k)}, {kClipper, kGeos},
          side * side - (k - 1.0) * (k - 1.0));
}

void CompareCells(Harness& harness, int columns, int rows) {
  const BooleanWork work{Operation::kUnion, Cells(columns, rows)};
  Compare(harness, "neighbouring cells", columns * rows, work, {kClipper, kGeos},
          600.0 * columns * 600.0 * rows);
}

}  // namespace

int main(int argc, char** argv) {
  bool quick = false;
  std::string only;
  for (int i = 1; i < argc; ++i) {
    if (std::string(argv[i]) == "--quick") {
      quick = true;
    } else {
      only = argv[i];
    }
  }
  Harness harness(quick ? 1.5 : 8, only);
  CompareCoasts(harness, quick ? 10000 : 1000000);
  CompareStars(harness, quick ? 10000 : 100000);
  CompareHoles(harness, quick ? 10 : 100);
  CompareBars(harness, quick ? 20 : 100);
  CompareCells(harness, quick ? 10 : 60, quick ? 10 : 50);
  return 0;
}

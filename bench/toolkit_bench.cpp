// The toolkit's products, inverse, rotation builders and planar intersection,
// each beside the same work in Eigen. Both sides are compiled with the project's
// flags; the toolkit is called in the shared library, Eigen is inlined here.
//
// One iteration goes through an array of kCount operands, so that neither side can
// keep its work out of memory. Divide the times by kCount.
#include <benchmark/benchmark.h>
#include <zelvan/toolkit.h>

#include <array>
#include <cstdint>
#include <random>

#ifdef ZELVAN_BENCH_EIGEN
#include <Eigen/Dense>
#endif

namespace {

constexpr std::size_t kCount = 256;
constexpr std::uint64_t kSeed = 20;

// Operands start on a page and results half a page further: where a store and the
// next load share the low twelve bits of their addresses, the processor waits, and
// the luck of the allocator would decide the comparison.
constexpr std::size_t kPage = 4096;

template <class T>
struct alignas(kPage) Operands : std::array<T, kCount> {};

template <class T>
struct alignas(kPage) Results {
  T& operator[](std::size_t i) { return items[i]; }
  T* data() { return items.data(); }
  std::array<char, kPage / 2> gap;
  std::array<T, 2 * kCount> items;
};

using Quad = std::array<VECTF, 4>;

// Points, axes and angles for both sides, in [-1, 1).
Operands<Quad> Quads() {
  std::mt19937_64 bits(kSeed);
  const auto number = [&bits] { return static_cast<double>(bits() >> 11) * 0x1p-52 - 1.0; };
  Operands<Quad> quads;
  for (Quad& quad : quads) {
    for (VECTF& p : quad) p = VECTF(number(), number(), number());
  }
  return quads;
}

// The results of `make` for each of the quads.
template <class T, class Make>
Operands<T> FromQuads(Make make) {
  const Operands<Quad> quads = Quads();
  Operands<T> made;
  for (std::size_t i = 0; i < kCount; ++i) made[i] = make(quads[i]);
  return made;
}

// An affine matrix that is far from singular.
MATRX Matrix(const Quad& quad) {
  MATRX m;
  const VECTF scale(2.0, 3.0, 4.0);
  m.RotateScale(&quad[0], quad[1], quad[2].x, &scale);
  return m;
}

Operands<MATRX> Matrices() {
  return FromQuads<MATRX>(Matrix);
}

Operands<VECTF> Points() {
  return FromQuads<VECTF>([](const Quad& quad) { return quad[0]; });
}

// Runs `work(i)` over the operands and keeps the compiler from dropping `results`.
template <class Results, class Work>
void Run(benchmark::State& state, Results& results, Work work) {
  for (auto _ : state) {
    for (std::size_t i = 0; i < kCount; ++i) work(i);
    benchmark::DoNotOptimize(results.data());
    benchmark::ClobberMemory();
  }
  state.SetItemsProcessed(state.iterations() * static_cast<std::int64_t>(kCount));
}

void MatrixProduct_Toolkit(benchmark::State& state) {
  static const auto m = Matrices();
  static Results<MATRX> out;
  Run(state, out, [&](std::size_t i) { out[i] = m[i] * m[kCount - 1 - i]; });
}
BENCHMARK(MatrixProduct_Toolkit);

void PointTransform_Toolkit(benchmark::State& state) {
  static const auto p = Points();
  const MATRX m = Matrices()[0];
  static Results<VECTF> out;
  Run(state, out, [&](std::size_t i) { out[i] = p[i] * m; });
}
BENCHMARK(PointTransform_Toolkit);

void Inverse_Toolkit(benchmark::State& state) {
  static const auto m = Matrices();
  static Results<MATRX> out;
  Run(state, out, [&](std::size_t i) { m[i].Inverse(out[i]); });
}
BENCHMARK(Inverse_Toolkit);

void AxisRotation_Toolkit(benchmark::State& state) {
  static const auto q = Quads();
  static Results<MATRX> out;
  Run(state, out,
      [&](std::size_t i) { out[i].RotateScale(&q[i][0], q[i][1], q[i][2].x, nullptr); });
}
BENCHMARK(AxisRotation_Toolkit);

void RotationFromZ_Toolkit(benchmark::State& state) {
  static const auto q = Quads();
  static Results<MATRX> out;
  Run(state, out, [&](std::size_t i) { out[i].CalcNMatrx(&q[i][0], q[i][1], false); });
}
BENCHMARK(RotationFromZ_Toolkit);

void Intersection_Toolkit(benchmark::State& state) {
  static const auto q = Quads();
  static Results<VECTF> out;
  Run(state, out, [&](std::size_t i) {
    vec::isect2(&q[i][0], &q[i][1], &q[i][2], &q[i][3], &out[2 * i], &out[2 * i + 1], true);
  });
}
BENCHMARK(Intersection_Toolkit);

#ifdef ZELVAN_BENCH_EIGEN

// Eigen in its own layout and convention, columns for rows: each matrix is the
// transposed one, so that the same numbers are worked on.
using Eigen::Matrix3d;
using Eigen::Matrix4d;
using Eigen::Vector2d;
using Eigen::Vector3d;

Vector3d Column(const VECTF& v) {
  return {v.x, v.y, v.z};
}

Operands<Matrix4d> EMatrices() {
  return FromQuads<Matrix4d>([](const Quad& quad) {
    const MATRX m = Matrix(quad);
    return Matrix4d(&m.m[0][0]);
  });
}

using EQuad = std::array<Vector3d, 4>;

Operands<EQuad> EQuads() {
  return FromQuads<EQuad>([](const Quad& q) {
    return EQuad{Column(q[0]), Column(q[1]), Column(q[2]), Column(q[3])};
  });
}

// p -> R (p - center) + center.
void AboutCenter(Matrix4d& m, const Matrix3d& rotation, const Vector3d& center) {
  m.setIdentity();
  m.topLeftCorner<3, 3>() = rotation;
  m.col(3).head<3>() = center - rotation * center;
}

void MatrixProduct_Eigen(benchmark::State& state) {
  static const auto m = EMatrices();
  static Results<Matrix4d> out;
  Run(state, out, [&](std::size_t i) { out[i].noalias() = m[i] * m[kCount - 1 - i]; });
}
BENCHMARK(MatrixProduct_Eigen);

void PointTransform_Eigen(benchmark::State& state) {
  static const Operands<Vector3d> p =
      FromQuads<Vector3d>([](const Quad& quad) { return Column(quad[0]); });
  const Matrix4d m = EMatrices()[0];
  static Results<Vector3d> out;
  Run(state, out, [&](std::size_t i) {
    out[i].noalias() = m.topLeftCorner<3, 3>() * p[i] + m.col(3).head<3>();
  });
}
BENCHMARK(PointTransform_Eigen);

void Inverse_Eigen(benchmark::State& state) {
  static const auto m = EMatrices();
  static Results<Matrix4d> out;
  Run(state, out, [&](std::size_t i) { out[i] = m[i].inverse(); });
}
BENCHMARK(Inverse_Eigen);

void AxisRotation_Eigen(benchmark::State& state) {
  static const auto q = EQuads();
  static Results<Matrix4d> out;
  Run(state, out, [&](std::size_t i) {
    const Eigen::AngleAxisd turn(q[i][2].x(), q[i][1].normalized());
    AboutCenter(out[i], turn.toRotationMatrix(), q[i][0]);
  });
}
BENCHMARK(AxisRotation_Eigen);

void RotationFromZ_Eigen(benchmark::State& state) {
  static const auto q = EQuads();
  static Results<Matrix4d> out;
  Run(state, out, [&](std::size_t i) {
    const auto turn = Eigen::Quaterniond::FromTwoVectors(Vector3d::UnitZ(), q[i][1]);
    AboutCenter(out[i], turn.toRotationMatrix(), q[i][0]);
  });
}
BENCHMARK(RotationFromZ_Eigen);

void Intersection_Eigen(benchmark::State& state) {
  static const auto q = EQuads();
  static Results<Vector3d> out;
  Run(state, out, [&](std::size_t i) {
    using Line = Eigen::Hyperplane<double, 2>;
    const auto at = [&](std::size_t k) { return Vector2d(q[i][k].head<2>()); };
    const Vector2d p = Line::Through(at(0), at(1)).intersection(Line::Through(at(2), at(3)));
    out[i] = {p.x(), p.y(), 0.0};
  });
}
BENCHMARK(Intersection_Eigen);

#endif

}  // namespace

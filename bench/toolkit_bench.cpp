// The toolkit's products, inverse, rotation builders and planar intersection,
// each beside the same work in Eigen. Both sides are compiled with the project's
// flags; the toolkit is called in the shared library, Eigen is inlined here.
//
// One iteration goes through an array of kCount operands, so that neither side can
// keep its work out of memory; the figures are for one item.
#include <benchmark/benchmark.h>
#include <zelvan/toolkit.h>

#include <array>
#include <cstdint>
#include <random>
#include <vector>

#ifdef ZELVAN_BENCH_EIGEN
#include <Eigen/Dense>
#endif

namespace {

constexpr std::size_t kCount = 256;
constexpr std::uint64_t kSeed = 20;

using Quad = std::array<VECTF, 4>;

// Points, axes and angles for both sides, in [-1, 1).
std::vector<Quad> Quads() {
  std::mt19937_64 bits(kSeed);
  const auto number = [&bits] { return static_cast<double>(bits() >> 11) * 0x1p-52 - 1.0; };
  std::vector<Quad> quads(kCount);
  for (Quad& quad : quads) {
    for (VECTF& p : quad) p = VECTF(number(), number(), number());
  }
  return quads;
}

// An affine matrix that is far from singular.
MATRX Matrix(const Quad& quad) {
  MATRX m;
  const VECTF scale(2.0, 3.0, 4.0);
  m.RotateScale(&quad[0], quad[1], quad[2].x, &scale);
  return m;
}

std::vector<MATRX> Matrices() {
  std::vector<MATRX> matrices;
  for (const Quad& quad : Quads()) matrices.push_back(Matrix(quad));
  return matrices;
}

std::vector<VECTF> Points() {
  std::vector<VECTF> points;
  for (const Quad& quad : Quads()) points.push_back(quad[0]);
  return points;
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
  const std::vector<MATRX> m = Matrices();
  std::vector<MATRX> out(kCount);
  Run(state, out, [&](std::size_t i) { out[i] = m[i] * m[kCount - 1 - i]; });
}
BENCHMARK(MatrixProduct_Toolkit);

void PointTransform_Toolkit(benchmark::State& state) {
  const std::vector<VECTF> p = Points();
  const MATRX m = Matrices()[0];
  std::vector<VECTF> out(kCount);
  Run(state, out, [&](std::size_t i) { out[i] = p[i] * m; });
}
BENCHMARK(PointTransform_Toolkit);

void Inverse_Toolkit(benchmark::State& state) {
  const std::vector<MATRX> m = Matrices();
  std::vector<MATRX> out(kCount);
  Run(state, out, [&](std::size_t i) { m[i].Inverse(out[i]); });
}
BENCHMARK(Inverse_Toolkit);

void AxisRotation_Toolkit(benchmark::State& state) {
  const std::vector<Quad> q = Quads();
  std::vector<MATRX> out(kCount);
  Run(state, out,
      [&](std::size_t i) { out[i].RotateScale(&q[i][0], q[i][1], q[i][2].x, nullptr); });
}
BENCHMARK(AxisRotation_Toolkit);

void RotationFromZ_Toolkit(benchmark::State& state) {
  const std::vector<Quad> q = Quads();
  std::vector<MATRX> out(kCount);
  Run(state, out, [&](std::size_t i) { out[i].CalcNMatrx(&q[i][0], q[i][1], false); });
}
BENCHMARK(RotationFromZ_Toolkit);

void Intersection_Toolkit(benchmark::State& state) {
  const std::vector<Quad> q = Quads();
  std::vector<VECTF> out(2 * kCount);
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

std::vector<Matrix4d> EMatrices() {
  std::vector<Matrix4d> matrices;
  for (const MATRX& m : Matrices()) matrices.emplace_back(&m.m[0][0]);
  return matrices;
}

std::vector<std::array<Vector3d, 4>> EQuads() {
  const std::vector<Quad> points = Quads();
  std::vector<std::array<Vector3d, 4>> quads(kCount);
  for (std::size_t i = 0; i < kCount; ++i) {
    for (std::size_t k = 0; k < 4; ++k) quads[i][k] = Vector3d(&points[i][k].x);
  }
  return quads;
}

// p -> R (p - center) + center.
void AboutCenter(Matrix4d& m, const Matrix3d& rotation, const Vector3d& center) {
  m.setIdentity();
  m.topLeftCorner<3, 3>() = rotation;
  m.col(3).head<3>() = center - rotation * center;
}

void MatrixProduct_Eigen(benchmark::State& state) {
  const std::vector<Matrix4d> m = EMatrices();
  std::vector<Matrix4d> out(kCount);
  Run(state, out, [&](std::size_t i) { out[i].noalias() = m[i] * m[kCount - 1 - i]; });
}
BENCHMARK(MatrixProduct_Eigen);

void PointTransform_Eigen(benchmark::State& state) {
  std::vector<Vector3d> p;
  for (const VECTF& point : Points()) p.emplace_back(point.x, point.y, point.z);
  const Matrix4d m = EMatrices()[0];
  std::vector<Vector3d> out(kCount);
  Run(state, out, [&](std::size_t i) {
    out[i].noalias() = m.topLeftCorner<3, 3>() * p[i] + m.col(3).head<3>();
  });
}
BENCHMARK(PointTransform_Eigen);

void Inverse_Eigen(benchmark::State& state) {
  const std::vector<Matrix4d> m = EMatrices();
  std::vector<Matrix4d> out(kCount);
  Run(state, out, [&](std::size_t i) { out[i] = m[i].inverse(); });
}
BENCHMARK(Inverse_Eigen);

void AxisRotation_Eigen(benchmark::State& state) {
  const auto q = EQuads();
  std::vector<Matrix4d> out(kCount);
  Run(state, out, [&](std::size_t i) {
    const Eigen::AngleAxisd turn(q[i][2].x(), q[i][1].normalized());
    AboutCenter(out[i], turn.toRotationMatrix(), q[i][0]);
  });
}
BENCHMARK(AxisRotation_Eigen);

void RotationFromZ_Eigen(benchmark::State& state) {
  const auto q = EQuads();
  std::vector<Matrix4d> out(kCount);
  Run(state, out, [&](std::size_t i) {
    const auto turn = Eigen::Quaterniond::FromTwoVectors(Vector3d::UnitZ(), q[i][1]);
    AboutCenter(out[i], turn.toRotationMatrix(), q[i][0]);
  });
}
BENCHMARK(RotationFromZ_Eigen);

void Intersection_Eigen(benchmark::State& state) {
  const auto q = EQuads();
  std::vector<Vector3d> out(kCount);
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

// The toolkit on seeded input (results.h): every exported function but those that go through the
// platform's sine, cosine, arc tangent or arc cosine. (The square root is exactly rounded
// everywhere.)
#include <zelvan/toolkit.h>

#include <array>
#include <cstdint>
#include <string>
#include <vector>

#include "results.h"
#include "support/random.h"

namespace same_bytes {

namespace {

using zelvan::test::Random;

// Draws stand in braces, where their order is fixed, or in statements of their own.
VECTF Vector(Random& random) {
  // Integers now and then: equal, parallel and degenerate inputs.
  if (random.Below(3) == 0) {
    const int v[] = {random.Between(-2, 2), random.Between(-2, 2), random.Between(-2, 2)};
    return VECTF(v[0], v[1], v[2]);
  }
  const double v[] = {random.Between(-10.0, 10.0), random.Between(-10.0, 10.0),
                      random.Between(-10.0, 10.0)};
  return VECTF(v);
}

MATRX Matrix(Random& random) {
  MATRX m;
  for (auto& row : m.m) {
    for (double& x : row) x = random.Between(-3.0, 3.0);
  }
  if (random.Below(2) == 0) m.m[0][3] = m.m[1][3] = m.m[2][3] = 0.0, m.m[3][3] = 1.0;
  return m;
}

TFORM Transform(Random& random) {
  TFORM t = TFORM::T(Vector(random)) * TFORM::S(VECTF(2, -0.7, 1.3));
  t.mDir = t.mDir * Matrix(random);
  t.mDir.Inverse(t.mInv);
  return t;
}

void Add(Hash& hash, const VECTF& v) {
  hash.Add(v.x).Add(v.y).Add(v.z);
}
void Add(Hash& hash, const MATRX& m) {
  for (const auto& row : m.m) {
    for (const double x : row) hash.Add(x);
  }
}
void Add(Hash& hash, const TFORM& t) {
  Add(hash, t.mDir);
  Add(hash, t.mInv);
}

void AddVectors(Random& random, Hash& hash) {
  VECTF a = Vector(random);
  const VECTF b = Vector(random);
  const VECTF c = Vector(random);
  const VECTF d = Vector(random);
  hash.Add(a.Length()).Add(int{vec::cmp(a, b)}).Add(int{b.IsZero()});
  hash.Add(vec::dist2(a, b)).Add(vec::dist3(a, b));
  Add(hash, a.Normal());
  Add(hash, vec::calc_normal(a, b, c));
  VECTF first(7, 7, 7);
  VECTF second(8, 8, 8);
  hash.Add(vec::isect2(&a, &b, &c, &d, &first, &second, random.Below(2) == 0));
  Add(hash, first);
  Add(hash, second);
  hash.Add(vec::nearest(a, b, c, &first));
  hash.Add(static_cast<int>(vec::cross_plane(&second, a, b, c, d)));
  Add(hash, first);
  Add(hash, second);
  std::array<double, 7> arc{};
  hash.Add(
      int{mth_calc_arc(&arc[0], &arc[1], &arc[2], &arc[3], &arc[4], &arc[5], &arc[6], a, b, c)});
  for (const double x : arc) hash.Add(x);
  hash.Add(M_G2R(a.x * 100)).Add(M_R2G(b.x));
  a.Normalize();
  Add(hash, a);
}

void AddMatrices(Random& random, Hash& hash) {
  const MATRX a = Matrix(random);
  const MATRX b = Matrix(random);
  VECTF v = Vector(random);
  MATRX inverse = a;
  hash.Add(a.det()).Add(a.Inverse(inverse));
  Add(hash, inverse);
  Add(hash, a * b);
  Add(hash, v * a);
  const VECTH h = VECTH{v.x, v.y, v.z, 0.5} * b;
  hash.Add(h.x).Add(h.y).Add(h.z).Add(h.w);
  v *= b;
  Add(hash, v);
}

void AddTransforms(Random& random, Hash& hash) {
  const TFORM a = Transform(random);
  const TFORM b = Transform(random);
  VECTF v = Vector(random);
  Add(hash, a * b);
  Add(hash, a.Inverse());
  TFORM t = TFORM::E();
  tform_InBasis(&t, a, b);
  Add(hash, t);
  const VECTF w[] = {Vector(random), Vector(random), Vector(random), Vector(random),
                     Vector(random)};
  const bool flag = random.Below(2) == 0;
  view_tform(&t, flag, v, w[0], w[1], w[2]);
  Add(hash, t);
  const bool hit = Point2Plain(a, b, w[3], &v);
  hash.Add(int{hit});
  Add(hash, v);
  tform_direct(&v, w[4], a, !flag);
  Add(hash, v);
}

}  // namespace

void AddToolkit(Results& results) {
  constexpr int kRounds = 200;
  for (std::uint64_t seed = 1; seed <= 10; ++seed) {
    Random random(seed);
    const std::string number = std::to_string(seed);
    Hash vectors;
    Hash matrices;
    Hash transforms;
    for (int k = 0; k < kRounds; ++k) AddVectors(random, vectors);
    for (int k = 0; k < kRounds; ++k) AddMatrices(random, matrices);
    for (int k = 0; k < kRounds; ++k) AddTransforms(random, transforms);
    results.Add("vectors/" + number, vectors);
    results.Add("matrices/" + number, matrices);
    results.Add("transforms/" + number, transforms);
  }
}

}  // namespace same_bytes

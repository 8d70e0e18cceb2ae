// The toolkit on seeded input (results.h): every exported function but those that go through the
// platform's sine, cosine, arc tangent or arc cosine. (The square root is exactly rounded
// everywhere.)
#include <zelvan/toolkit.h>

#include "results.h"
#include "support/random.h"

namespace same_bytes {

namespace {

using zelvan::test::Random;

// Draws stand in braces, where their order is fixed, or in statements of their own.
VECTF Vector(Random& random) {
  const bool whole = random.Below(3) == 0;  // equal, parallel and degenerate inputs
  double v[3];
  for (double& x : v) x = whole ? random.Between(-2, 2) : random.Between(-10.0, 10.0);
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

void AddVectors(Random& random, Hash& hash) {
  const VECTF v[] = {Vector(random), Vector(random), Vector(random), Vector(random)};
  VECTF a = v[0], b = v[1], c = v[2], d = v[3];
  VECTF first(7, 7, 7), second(8, 8, 8);
  hash.Add(a.Length(), vec::cmp(a, b), b.IsZero(), vec::dist2(a, b), vec::dist3(a, b), a.Normal(),
           vec::calc_normal(a, b, c), M_G2R(a.x * 100), M_R2G(b.x));
  hash.Add(vec::isect2(&a, &b, &c, &d, &first, &second, random.Below(2) == 0));
  hash.Add(first, second);
  hash.Add(vec::nearest(a, b, c, &first), vec::cross_plane(&second, a, b, c, d));
  hash.Add(first, second);
  double arc[7] = {};
  hash.Add(mth_calc_arc(&arc[0], &arc[1], &arc[2], &arc[3], &arc[4], &arc[5], &arc[6], a, b, c));
  a.Normalize();
  hash.Add(arc, a);
}

void AddMatrices(Random& random, Hash& hash) {
  const MATRX a = Matrix(random);
  const MATRX b = Matrix(random);
  VECTF v = Vector(random);
  MATRX inverse = a;
  hash.Add(a.det(), a.Inverse(inverse), a * b, v * a, VECTH{v.x, v.y, v.z, 0.5} * b);
  v *= b;
  hash.Add(inverse, v);
}

void AddTransforms(Random& random, Hash& hash) {
  const TFORM a = Transform(random);
  const TFORM b = Transform(random);
  VECTF w[] = {Vector(random), Vector(random), Vector(random),
               Vector(random), Vector(random), Vector(random)};
  const bool flag = random.Below(2) == 0;
  TFORM basis = TFORM::E();
  TFORM view = TFORM::E();
  tform_InBasis(&basis, a, b);
  view_tform(&view, flag, w[0], w[1], w[2], w[3]);
  hash.Add(a * b, a.Inverse(), basis, view);
  hash.Add(Point2Plain(a, b, w[4], &w[0]));
  tform_direct(&w[1], w[5], a, !flag);
  hash.Add(w);
}

}  // namespace

void AddToolkit(Hashes& hashes) {
  Random random(1);
  for (int k = 0; k < 2000; ++k) {
    AddVectors(random, hashes["vectors"]);
    AddMatrices(random, hashes["matrices"]);
    AddTransforms(random, hashes["transforms"]);
  }
}

}  // namespace same_bytes

// Vectors and matrices: tolerances from both sides, products, inverses, rotations.
#include <type_traits>

#include "math/support.h"

namespace {

static_assert(sizeof(VECTF) == 24 && sizeof(VECTH) == 32);
static_assert(sizeof(MATRX) == 128 && sizeof(TFORM) == 256);
static_assert(std::is_trivially_copyable_v<VECTF> && std::is_trivially_copyable_v<TFORM>);

// Used before main, as a host's static initialiser may.
const VECTF kEarly = Plus(vec::vYinv(), 2.0, vec::vXdir()) * TFORM::E().mDir;

TEST(Vector, ConstantsAreOneObjectAndReadyEarly) {
  ExpectVector(kEarly, VECTF(2, -1, 0));
  EXPECT_EQ(&vec::vXdir(), &vec::vXdir());
  EXPECT_EQ(&vec::mE(), &vec::mE());
  EXPECT_EQ(&TFORM::E(), &TFORM::E());
  ExpectVector(Plus(vec::vXinv(), 1.0, Plus(vec::vYdir(), 1.0, vec::vZinv())), VECTF(-1, 1, -1));
  ExpectVector(Plus(vec::vZdir(), 1.0, vec::vZero()), VECTF(0, 0, 1));
}

TEST(Vector, ZeroIsExactAndHasNoDirection) {
  EXPECT_TRUE(VECTF(-0.0, 0, 0).IsZero());
  EXPECT_FALSE(VECTF(0, 0, 1e-300).IsZero());
  ExpectVector(VECTF(0, 0, 0).Normal(), VECTF(0, 0, 0));
  ExpectVector(VECTF(0, 0, 1e-300).Normal(), VECTF(0, 0, 1e-300));
  ForSeeds(100, [](Random& random) {
    const VECTF v = random.Vector();
    const double r = 1.0 / v.Length();
    ExpectVector(v.Normal(), VECTF(v.x * r, v.y * r, v.z * r));
  });
}

TEST(Vector, EqualityToleranceIsStrictOnEachAxis) {
  const double below = std::nextafter(1e-6, 0.0);
  for (const VECTF& axis : {vec::vXdir(), vec::vYinv(), vec::vZdir()}) {
    EXPECT_TRUE(vec::cmp(vec::vZero(), Plus(vec::vZero(), below, axis)));
    EXPECT_FALSE(vec::cmp(vec::vZero(), Plus(vec::vZero(), 1e-6, axis)));
  }
}

MATRX RandomMatrix(Random& random) {
  MATRX m;
  for (auto& row : m.m) {
    for (double& entry : row) entry = random.In(-2, 2);
  }
  return m;
}

// Gauss-Jordan elimination with partial pivoting.
MATRX Eliminated(MATRX a, double* det) {
  MATRX inverse = vec::mE();
  *det = 1.0;
  for (int c = 0; c < 4; ++c) {
    int pivot = c;
    for (int r = c; r < 4; ++r) {
      if (std::abs(a.m[r][c]) > std::abs(a.m[pivot][c])) pivot = r;
    }
    if (pivot != c) *det = -*det;
    std::swap(a.m[c], a.m[pivot]);
    std::swap(inverse.m[c], inverse.m[pivot]);
    *det *= a.m[c][c];
    for (int r = 0; r < 4; ++r) {
      const double factor = r == c ? 1.0 - 1.0 / a.m[c][c] : a.m[r][c] / a.m[c][c];
      for (int k = 0; k < 4; ++k) {
        a.m[r][k] -= factor * a.m[c][k];
        inverse.m[r][k] -= factor * inverse.m[c][k];
      }
    }
  }
  return inverse;
}

TEST(Matrix, ProductsAgreeAndMayOverwriteAnOperand) {
  ForSeeds(200, [](Random& random) {
    const MATRX a = RandomMatrix(random);
    MATRX b = RandomMatrix(random);
    const MATRX product = a * b;
    const VECTH v = {random.In(-1, 1), random.In(-1, 1), random.In(-1, 1), random.In(-1, 1)};
    const VECTH one = v * a * b;
    const VECTH other = v * product;
    EXPECT_NEAR(one.x, other.x, 1e-13);
    EXPECT_NEAR(one.w, other.w, 1e-13);
    MATRX left = a;
    left = left * b;
    b = a * b;
    ExpectMatrix(left, product);
    ExpectMatrix(b, product);

    // A point neither reads column 3 nor is divided; in place is the same.
    const VECTF p = random.Vector();
    const VECTH h = VECTH(p) * a;
    VECTF moved = p;
    ExpectVector(moved *= a, p * a);
    EXPECT_EQ(moved.x, h.x);
    EXPECT_EQ(moved.y, h.y);
    EXPECT_EQ(moved.z, h.z);
    EXPECT_NEAR(h.w, p.x * a.m[0][3] + p.y * a.m[1][3] + p.z * a.m[2][3] + a.m[3][3], 1e-13);
  });
}

TEST(Matrix, InverseAgreesWithElimination) {
  ForSeeds(500, [](Random& random) {
    const MATRX m = RandomMatrix(random);
    double det = 0.0;
    const MATRX want = Eliminated(m, &det);
    if (std::abs(det) < 0.05) return;
    EXPECT_NEAR(m.det(), det, 1e-12);
    MATRX inverse = m;
    EXPECT_EQ(inverse.Inverse(inverse), 1.0 / m.det()) << "into itself";
    ExpectMatrix(inverse, want, 1e-10);
  });
}

TEST(Matrix, SingularBoundIsAbsoluteAndStrict) {
  MATRX out = Diagonal(7, 7, 7);
  EXPECT_EQ(Diagonal(0.009, 0.009, 0.009).Inverse(out), 0.0);
  EXPECT_EQ(Diagonal(-std::nextafter(1e-6, 0.0), 1, 1).Inverse(out), 0.0);
  ExpectMatrix(out, Diagonal(7, 7, 7));
  EXPECT_EQ(Diagonal(1e-6, 1, 1).Inverse(out), 1.0 / 1e-6);
  EXPECT_EQ(Diagonal(2, 2, 2).Inverse(out), 0.125);
  ExpectMatrix(out, Diagonal(0.5, 0.5, 0.5));
}

TEST(Rotation, AgreesWithRodrigues) {
  ForSeeds(500, [](Random& random) {
    VECTF axis = random.Vector();
    const int zero = random.Below(8);  // bits: which components of the axis are 0
    if (zero & 1) axis.x = 0;
    if (zero & 2) axis.y = 0;
    if (zero & 4) axis.z = 0;
    const double angle = random.In(-7, 7);
    const VECTF q = random.Vector();
    const VECTF scale = random.Vector();
    const VECTF p = random.Vector();
    const VECTF turned = Turned(Plus(p, -1, q), axis, angle);
    MATRX m;
    m.RotateScale(nullptr, axis, angle, nullptr);
    ExpectVector(p * m, Turned(p, axis, angle), 1e-12);
    EXPECT_EQ(m.m[3][0], 0.0);
    m.RotateScale(&q, axis, angle, &scale);
    ExpectVector(p * m,
                 Plus(q, 1, VECTF(turned.x * scale.x, turned.y * scale.y, turned.z * scale.z)),
                 1e-11);
    ExpectVector(q * m, q, 1e-11);
    m.RotateShift(q, axis, angle, scale);
    ExpectVector(p * m, Plus(Plus(q, 1, turned), 1, scale), 1e-11);
    EXPECT_EQ(m.m[0][3] + m.m[1][3] + m.m[2][3], 0.0);
    EXPECT_EQ(m.m[3][3], 1.0);
  });
}

TEST(Rotation, FromZCarriesZOntoTheNormalAndBack) {
  ForSeeds(300, [](Random& random) {
    const VECTF n = random.Vector(random.Below(2) != 0 ? 10.0 : 1e-3);
    const VECTF q = random.Vector();
    TFORM t;
    t.CalcNTform(&q, n, random.Below(2) != 0);
    const bool toZ = vec::dist3(Plus(q, 1, vec::vZdir()) * t.mInv, Plus(q, 1, n.Normal())) < 1e-9;
    const MATRX& there = toZ ? t.mInv : t.mDir;
    ExpectVector(Plus(q, 1, vec::vZdir()) * there, Plus(q, 1, n.Normal()), 1e-9);
    ExpectMatrix(t.mDir * t.mInv, vec::mE(), 1e-12);
    // The shortest way: what stands at right angles to both stays.
    ExpectVector(Plus(q, 1, VECTF(-n.y, n.x, 0)) * there, Plus(q, 1, VECTF(-n.y, n.x, 0)), 1e-8);
  });
}

TEST(Rotation, NormalsNextToTheZLine) {
  const double inside = std::nextafter(1e-6, 0.0);
  MATRX m;
  for (const VECTF& up : {vec::vZdir(), vec::vZero(), VECTF(inside, 0, 1e-6)}) {
    m.CalcNMatrx(nullptr, up, false);
    ExpectMatrix(m, vec::mE(), 1e-15);
  }
  m.CalcNMatrx(nullptr, VECTF(1e-6, 0, 1e-6), false);
  ExpectVector(vec::vZdir() * m, VECTF(std::sqrt(0.5), 0, std::sqrt(0.5)), 1e-15);

  // Half turns: the sign of a last-bit entry tells the axis from its opposite.
  const struct {
    VECTF normal, axis;
  } downs[] = {{{0, 0, -1}, {0, -1, 0}},       {{inside, 0, -1}, {0, 1, 0}},
               {{-inside, 0, -1}, {0, -1, 0}}, {{1e-7, 2e-7, -1}, {-1, 0, 0}},
               {{0, -1e-7, -1}, {1, 0, 0}},    {{3e-7, -3e-7, -1}, {0, 1, 0}}};
  for (const auto& down : downs) {
    MATRX want;
    want.RotateScale(nullptr, down.axis, 3.141592653589793, nullptr);
    m.CalcNMatrx(nullptr, down.normal, false);
    ExpectMatrix(m, want);
    ExpectVector(vec::vZdir() * m, vec::vZinv(), 1e-15);
  }
}

}  // namespace

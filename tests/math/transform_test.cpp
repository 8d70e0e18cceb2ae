// Transforms: composition, both directions, outputs that are inputs, frames.
#include "math/support.h"

namespace {

TFORM Some(Random& random) {
  return TFORM::R(random.Vector(3)) * TFORM::T(random.Vector()) *
         TFORM::S(random.In(0.5, 2), random.In(0.5, 2), random.In(-2, -0.5));
}

TEST(Transform, ElementaryOnesAndTheirOrder) {
  ForSeeds(200, [](Random& random) {
    const VECTF p = random.Vector(), v = random.Vector(), a = random.Vector(3);
    ExpectVector(p * TFORM::T(v).mDir, Plus(p, 1, v));
    ExpectVector(p * TFORM::S(v).mDir, VECTF(p.x * v.x, p.y * v.y, p.z * v.z));
    const VECTF xy = Turned(Turned(p, vec::vXdir(), a.x), vec::vYdir(), a.y);
    ExpectVector(p * TFORM::R(a).mDir, Turned(xy, vec::vZdir(), a.z), 1e-12);

    const TFORM s = Some(random), t = Some(random);
    ExpectVector(p * (s * t).mDir, p * s.mDir * t.mDir, 1e-11);
    ExpectVector(p * (s * t).mDir * (s * t).mInv, p, 1e-11);
    TFORM overwritten = s;
    overwritten = overwritten * t;
    ExpectMatrix(overwritten.mInv, (s * t).mInv);
    ExpectMatrix(t.Inverse().mDir, t.mInv);
    ExpectMatrix(t.Inverse().mInv, t.mDir);
  });
  EXPECT_EQ(TFORM::S(2, 4, 0).mInv.m[2][2], HUGE_VAL);
}

TEST(Transform, DirectionsIgnoreTheTranslation) {
  ForSeeds(100, [](Random& random) {
    const TFORM t = Some(random);
    const VECTF p = random.Vector(), q = random.Vector();
    VECTF v = Plus(q, -1, p);
    tform_direct(&v, v, t, false);
    ExpectVector(v, Plus(q * t.mDir, -1, p * t.mDir), 1e-12);
    tform_direct(&v, v, t, true);
    ExpectVector(v, Plus(q, -1, p), 1e-12);
  });
}

TEST(Transform, InBasisGoesThereAndBackIntoAnyOutput) {
  ForSeeds(100, [](Random& random) {
    const TFORM basis = Some(random), t = Some(random);
    TFORM apart, asBasis = basis, asT = t;
    tform_InBasis(&apart, basis, t);
    tform_InBasis(&asBasis, asBasis, t);
    tform_InBasis(&asT, basis, asT);
    const VECTF p = random.Vector();
    ExpectVector(p * apart.mDir, p * basis.mDir * t.mDir * basis.mInv, 1e-10);
    ExpectVector(p * apart.mInv, p * basis.mDir * t.mInv * basis.mInv, 1e-10);
    for (const TFORM& other : {asBasis, asT}) {
      ExpectMatrix(other.mDir, apart.mDir);
      ExpectMatrix(other.mInv, apart.mInv);
    }
  });
}

TEST(Transform, ViewFrame) {
  ForSeeds(100, [](Random& random) {
    const MATRX turn = TFORM::R(random.Vector(3)).mDir;
    const VECTF o = random.Vector(), uvw = random.Vector();
    const VECTF x = vec::vXdir() * turn, y = vec::vYdir() * turn, z = vec::vZdir() * turn;
    TFORM view, world;
    view_tform(&view, false, o, x, Plus(y, 2, y), Plus(z, 0.5, z));
    view_tform(&world, true, o, x, y, z);
    const VECTF p = Plus(Plus(Plus(o, uvw.x, x), uvw.y, y), uvw.z, z);
    ExpectVector(p * view.mDir, uvw, 1e-12);
    ExpectVector(uvw * view.mInv, p, 1e-12);
    ExpectMatrix(world.mDir, view.mInv, 1e-15);
    ExpectMatrix(world.mInv, view.mDir, 1e-14);
  });
}

TEST(Transform, PointOntoPlane) {
  ForSeeds(100, [](Random& random) {
    TFORM plane, line;
    view_tform(&plane, false, vec::vZero(), random.Vector(), random.Vector(), random.Vector());
    view_tform(&line, false, random.Vector(), random.Vector(), random.Vector(), random.Vector());
    const VECTF n = vec::vZdir() * plane.mInv;
    VECTF d, out;
    tform_direct(&d, vec::vZdir(), line, true);
    const double cosine = n.x * d.x + n.y * d.y + n.z * d.z;
    if (std::abs(cosine) < 0.01) return;
    const VECTF p = random.Vector();
    ASSERT_TRUE(Point2Plain(plane, line, p, &out));
    EXPECT_NEAR(n.x * out.x + n.y * out.y + n.z * out.z, 0.0, 1e-9);
    EXPECT_NEAR(vec::calc_normal(p, Plus(p, 1, d), out).Length(), 0.0, 1e-9);
  });
  VECTF p(5, 6, 7);
  EXPECT_FALSE(Point2Plain(TFORM::E(), TFORM::S(1, 1, 1e6), p, &p));
  ExpectVector(p, VECTF(5, 6, 7));
  EXPECT_TRUE(Point2Plain(TFORM::T(1, 2, 3), TFORM::S(1, 1, 999999), p, &p));
  ExpectVector(p, VECTF(5, 6, 3), 1e-12);
}

}  // namespace

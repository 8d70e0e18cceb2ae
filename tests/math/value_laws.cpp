// Laws of vectors, matrices and transforms, each against another way to the same answer.
#include "math/trial.h"

namespace laws {
namespace {

MATRX SomeMatrix(Trial& trial) {
  MATRX m;
  for (int i = 0; i < 16; ++i) m.m[i / 4][i % 4] = trial.In(-2, 2);
  return m;
}

TFORM SomeTransform(Trial& trial) {
  return TFORM::R(trial.Vector(3)) * TFORM::T(trial.Vector()) *
         TFORM::S(trial.In(0.5, 2), trial.In(0.5, 2), trial.In(-2, -0.5));
}

double Dot(const VECTF& a, const VECTF& b) {
  return a.x * b.x + a.y * b.y + a.z * b.z;
}

VECTF Cross(const VECTF& a, const VECTF& b) {
  return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

VECTF Times(const VECTF& a, const VECTF& b) {
  return {a.x * b.x, a.y * b.y, a.z * b.z};
}

// Rodrigues: p turned by `angle` about the axis through the origin.
VECTF Turned(const VECTF& p, const VECTF& axis, double angle) {
  const double l = std::hypot(axis.x, axis.y, axis.z), c = std::cos(angle);
  const VECTF k = l > 0.0 ? VECTF(axis.x / l, axis.y / l, axis.z / l) : vec::vZdir();
  const VECTF level = Plus({p.x * c, p.y * c, p.z * c}, std::sin(angle), Cross(k, p));
  return Plus(level, Dot(k, p) * (1.0 - c), k);
}

bool Lengths(Trial& trial) {
  const VECTF a = trial.Vector(), b = trial.Vector(), c = trial.Vector(), u = Plus(b, -1, a);
  const double d = trial.Around(1e-6), r = 1.0 / u.Length(), none[] = {0.0, -0.0, 1e-300};
  const VECTF apart[] = {{d, 0, 0}, {0, d, 0}, {0, 0, d}};
  const VECTF z(none[trial.Below(3)], none[trial.Below(3)], none[trial.Below(3)]);
  return Close(vec::dist3(a, b), std::hypot(u.x, u.y, u.z), 1e-13) &&
         Close(vec::dist2(a, b), std::hypot(u.x, u.y), 1e-13) &&
         Close(vec::calc_normal(a, b, c), Cross(u, Plus(c, -1, a))) &&
         Close(u.Normal(), Times(u, {r, r, r})) && Close(z.Normal(), z) &&
         z.IsZero() == (z.x + z.y + z.z == 0.0) &&
         vec::cmp(apart[trial.Below(3)], vec::vZero()) == (std::abs(d) < 1e-6);
}

bool Products(Trial& trial) {
  const MATRX a = SomeMatrix(trial), b = SomeMatrix(trial);
  MATRX want = {}, left = a, right = b;
  for (int i = 0; i < 64; ++i) {
    want.m[i / 16][i % 4] += a.m[i / 16][i / 4 % 4] * b.m[i / 4 % 4][i % 4];
  }
  left = left * b;
  right = a * right;
  const double* const row = a.m[2];
  const VECTH image = VECTH{row[0], row[1], row[2], row[3]} * b, h = VECTH(VECTF(row)) * b;
  VECTF moved(row);
  return Close(left, want, 1e-14) && Close(right, left) && Close(moved *= b, VECTF(row) * b) &&
         Close(image, {want.m[2][0], want.m[2][1], want.m[2][2], want.m[2][3]}, 1e-14) &&
         Close(moved, {h.x, h.y, h.z});
}

// The determinant is right where the adjugate over it is the inverse.
bool Inverses(Trial& trial) {
  const MATRX m = SomeMatrix(trial);
  MATRX inverse = m, out = m, flat = vec::mE(), back = flat;
  const double r = inverse.Inverse(inverse), d = trial.Around(1e-6);
  flat.m[1][1] = d * 4;
  flat.m[2][2] = 0.25;
  back.m[1][1] = 0.25 / d;
  back.m[2][2] = 4;
  const bool singular = std::abs(d) < 1e-6;
  return (std::abs(m.det()) < 0.05 || Close(m * inverse, vec::mE(), 1e-9)) &&
         r == (std::abs(m.det()) < 1e-6 ? 0 : 1.0 / m.det()) &&
         flat.Inverse(out) == (singular ? 0.0 : 1.0 / d) && Close(out, singular ? m : back, 1e-9);
}

bool Rotations(Trial& trial) {
  VECTF axis = trial.Vector();
  for (double* const part : {&axis.x, &axis.y, &axis.z}) *part *= trial.Below(3) > 0 ? 1 : 0;
  // The sine of an axis next to Z comes from its cosine, and with fewer digits.
  const double tilt = std::hypot(axis.x, axis.y) / std::hypot(axis.x, axis.y, axis.z);
  const double tolerance = 1e-11 / (tilt > 0 ? tilt : 1), angle = trial.In(-7, 7);
  const VECTF q = trial.Vector(), s = trial.Vector(), p = trial.Vector();
  const VECTF t = Turned(Plus(p, -1, q), axis, angle);
  MATRX turn, scale, shift;
  turn.RotateScale(nullptr, axis, angle, nullptr);
  scale.RotateScale(&q, axis, angle, &s);
  shift.RotateShift(q, axis, angle, s);
  return Close(p * turn, Turned(p, axis, angle), tolerance) &&
         Close(vec::vZero() * turn, vec::vZero()) &&
         Close(p * scale, Plus(q, 1, Times(t, s)), tolerance) &&
         Close(p * shift, Plus(Plus(q, 1, t), 1, s), tolerance) && (VECTH(p) * shift).w == 1.0;
}

bool Normals(Trial& trial) {
  const VECTF n = trial.Vector(trial.Flip() ? 10.0 : 1e-3), q = trial.Vector();
  const VECTF level = Plus(q, 1, {-n.y, n.x, 0}), up = Plus(q, 1, vec::vZdir());
  const bool toZ = trial.Flip();
  TFORM t;
  t.CalcNTform(&q, n, toZ);
  const MATRX& there = toZ ? t.mInv : t.mDir;
  return Close(up * there, Plus(q, 1, n.Normal()), 1e-9) &&  // by the shortest way
         Close(level * there, level, 1e-8) && Close(t.mDir * t.mInv, vec::mE(), 1e-12);
}

bool NormalsNextToZ(Trial& trial) {
  const double d = trial.Around(1e-6), x = d * trial.Below(5) / 4;  // x and the rest of d
  const VECTF n(trial.Flip() ? x : -x, d - x, trial.Below(3) - 1.0);
  MATRX m, want = vec::mE();
  m.CalcNMatrx(nullptr, n, false);
  if (!(std::abs(n.x) + std::abs(n.y) < 1e-6)) return Close(vec::vZdir() * m, n.Normal(), 1e-8);
  if (!(n.z < 0.0)) return Close(m, want, 1e-15);
  // The sign of a last-bit entry tells an axis from its opposite.
  const VECTF aboutX(n.y < 0 ? 1 : -1, 0, 0), aboutY(0, n.x > 0 ? 1 : -1, 0);
  const VECTF& axis = std::abs(n.x) < std::abs(n.y) ? aboutX : aboutY;
  want.RotateScale(nullptr, axis, 3.141592653589793, nullptr);
  return Close(m, want);
}

bool Transforms(Trial& trial) {
  const VECTF p = trial.Vector(), q = trial.Vector(), v = trial.Vector(), a = trial.Vector(3);
  const VECTF xy = Turned(Turned(p, vec::vXdir(), a.x), vec::vYdir(), a.y), pq = Plus(q, -1, p);
  const TFORM s = SomeTransform(trial), t = SomeTransform(trial), st = s * t;
  VECTF there = pq, back;
  tform_direct(&there, there, t, false);
  tform_direct(&back, there, t, true);
  TFORM apart, asBasis = s, asT = t;
  tform_InBasis(&apart, s, t);
  tform_InBasis(&asBasis, asBasis, t);
  tform_InBasis(&asT, s, asT);
  return Close(p * TFORM::T(v).mDir, Plus(p, 1, v)) && Close(p * TFORM::S(v).mDir, Times(p, v)) &&
         Close(p * TFORM::R(a).mDir, Turned(xy, vec::vZdir(), a.z), 1e-12) &&
         Close(p * st.mDir, p * s.mDir * t.mDir, 1e-11) && Close(p * st.mDir * st.mInv, p, 1e-11) &&
         Close(t.Inverse(), TFORM{t.mInv, t.mDir}) && Close(back, pq, 1e-12) &&
         Close(there, Plus(q * t.mDir, -1, p * t.mDir), 1e-12) &&
         Close(p * apart.mDir, p * s.mDir * t.mDir * s.mInv, 1e-10) &&
         Close(p * apart.mInv, p * s.mDir * t.mInv * s.mInv, 1e-10) && Close(asBasis, apart) &&
         Close(asT, apart);
}

bool Frames(Trial& trial) {
  const MATRX turn = TFORM::R(trial.Vector(3)).mDir;
  const VECTF o = trial.Vector(), uvw = trial.Vector();
  const VECTF x = vec::vXdir() * turn, y = vec::vYdir() * turn, z = vec::vZdir() * turn;
  const VECTF p = Plus(Plus(Plus(o, uvw.x, x), uvw.y, y), uvw.z, z);
  TFORM view, world;
  view_tform(&view, false, o, x, Plus(y, 2, y), Plus(z, 0.5, z));
  view_tform(&world, true, o, x, y, z);
  return Close(p * view.mDir, uvw, 1e-12) && Close(uvw * view.mInv, p, 1e-12) &&
         Close(world, view.Inverse(), 1e-14);
}

bool OntoPlane(Trial& trial) {
  const VECTF o = trial.Vector(), x = trial.Vector(), y = trial.Vector(), p = trial.Vector();
  TFORM plane, line, upright = TFORM::E();
  view_tform(&plane, false, vec::vZero(), x, y, trial.Vector());
  view_tform(&line, false, o, x, y, trial.Vector());
  const VECTF n(plane.mInv.m[2]), d(line.mInv.m[2]);
  VECTF out = p, level = p;
  const bool meets = Point2Plain(plane, line, p, &out);
  const double slope = upright.mInv.m[2][2] = trial.Around(1e-6);
  const bool met = Point2Plain(TFORM::T(o), upright, p, &level);
  return met == (std::abs(slope) > 1e-6) && Close(level, {p.x, p.y, met ? o.z : p.z}, 1e-12) &&
         (std::abs(Dot(n, d)) < 0.01 ||
          (meets && std::abs(Dot(n, out)) < 1e-9 && Cross(Plus(out, -1, p), d).Length() < 1e-9));
}

}  // namespace

const std::vector<Law> kValueLaws = {
    {"Lengths", Lengths},       {"Products", Products}, {"Inverses", Inverses},
    {"Rotations", Rotations},   {"Normals", Normals},   {"NormalsNextToZ", NormalsNextToZ},
    {"Transforms", Transforms}, {"Frames", Frames},     {"OntoPlane", OntoPlane}};

}  // namespace laws

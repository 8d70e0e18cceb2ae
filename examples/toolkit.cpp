// A traverse, as a surveyor books it: from a known station over three legs given
// by bearing (gon) and distance, then a last point fixed by two lines of sight.
// The ground is a sloping plane through three levelled heights; each point is set
// onto it and given coordinates along the strike and up the slope.
#include <zelvan/toolkit.h>

#include <cmath>
#include <cstdio>
#include <iterator>

namespace {

struct Leg {
  double bearing;   // gon, clockwise from north
  double distance;  // metres
};

// The end of a leg; x is east, y is north.
VECTF Polar(const VECTF& from, const Leg& leg) {
  const double angle = M_G2R(leg.bearing);
  return {from.x + leg.distance * std::cos(angle), from.y + leg.distance * std::sin(angle), 0.0};
}

Leg Between(const VECTF& from, const VECTF& to) {
  return {M_R2G(std::atan2(to.y - from.y, to.x - from.x)), vec::dist2(from, to)};
}

VECTF AtHeight(const VECTF& p, double height) {
  return {p.x, p.y, height};
}

// The frame of a plane: x along its strike (level), y up the slope, z its normal.
TFORM PlaneFrame(const VECTF& normal) {
  const VECTF strike = vec::calc_normal(vec::vZero(), vec::vZdir(), normal);
  const VECTF rise = vec::calc_normal(vec::vZero(), normal, strike);
  TFORM frame;
  view_tform(&frame, false, vec::vZero(), strike, rise, normal);
  return frame;
}

}  // namespace

int main() {
  const VECTF start(500.0, 200.0, 0.0);
  const Leg legs[] = {{35.25, 120.45}, {118.4, 96.3}, {201.75, 88.12}};

  VECTF points[5] = {start};
  for (int i = 0; i < 3; ++i) points[i + 1] = Polar(points[i], legs[i]);

  // The last point is sighted from the end of the traverse and from its start.
  const VECTF sightFromEnd = Polar(points[3], {265.4, 1.0});
  const VECTF sightFromStart = Polar(start, {142.8, 1.0});
  if (vec::isect2(&points[3], &sightFromEnd, &start, &sightFromStart, &points[4], nullptr, true) !=
      1) {
    std::puts("the two lines of sight do not meet");
    return 1;
  }

  // Heights levelled at three of the points. The start is the frame's origin, so
  // that everything is counted from there.
  const VECTF origin = AtHeight(start, 102.40);
  const TFORM fromOrigin = TFORM::T(origin).Inverse();
  const VECTF normal =
      vec::calc_normal(origin, AtHeight(points[3], 98.15), AtHeight(points[1], 104.10));
  const TFORM plane = PlaneFrame(normal);

  std::puts("point  bearing     leg       east      north   height   strike    slope");
  for (int i = 0; i < static_cast<int>(std::size(points)); ++i) {
    const Leg leg = i == 0 ? Leg{0.0, 0.0} : Between(points[i - 1], points[i]);
    VECTF ground;
    if (!Point2Plain(plane, TFORM::E(), points[i] * fromOrigin.mDir, &ground)) {
      std::puts("the plane stands upright");
      return 1;
    }
    const VECTF height = ground * fromOrigin.mInv;
    const VECTF uv = ground * plane.mDir;
    std::printf("%5d %8.4f %7.3f %10.3f %10.3f %8.3f %8.3f %8.3f\n", i, leg.bearing, leg.distance,
                points[i].x, points[i].y, height.z, uv.x, uv.y);
  }
  const Leg closing = Between(points[4], start);
  std::printf("closing leg: bearing %.4f gon, %.3f m\n", closing.bearing, closing.distance);
  return 0;
}

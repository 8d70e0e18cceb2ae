// Meetings of lines and circles (meeting.h).
#include "offset/meeting.h"

#include <cmath>

namespace zelvan::offset {

namespace {

WorldPoint Difference(GridPoint a, GridPoint b) noexcept {
  return {static_cast<double>(a.gx) - b.gx, static_cast<double>(a.gy) - b.gy};
}

WorldPoint Moved(GridPoint p, Direction d, double by, Direction e, double alongE) noexcept {
  return {p.gx + (d.x * by + e.x * alongE), p.gy + (d.y * by + e.y * alongE)};
}

Direction AlongEdge(Direction normal) noexcept {
  return {-normal.y, normal.x};
}

// An edge, and the copy of it at the distance.
struct Line {
  GridPoint start;
  Direction normal;
};

std::optional<WorldPoint> MeetingOfLines(const Line& a, const Line& b, double distance) noexcept {
  const Direction along = AlongEdge(a.normal);
  const double slope = Dot(along, b.normal);
  const WorldPoint start = Difference(a.start, b.start);
  const double lacking =
      distance * (1.0 - Dot(a.normal, b.normal)) - (start.x * b.normal.x + start.y * b.normal.y);
  if (slope == 0.0) return std::nullopt;
  return Moved(a.start, a.normal, distance, along, lacking / slope);
}

// The curve comes along the line to the circle, or leaves the circle along the line.
std::optional<WorldPoint> MeetingWithCircle(const Line& line, GridPoint centre, double distance,
                                            bool comesAlongLine) noexcept {
  const WorldPoint away = Difference(centre, line.start);
  const double height = away.x * line.normal.x + away.y * line.normal.y - distance;
  const double square = (distance - height) * (distance + height);
  if (square < 0.0) return std::nullopt;
  const Direction along = AlongEdge(line.normal);
  const double middle = away.x * along.x + away.y * along.y;
  const double half = std::sqrt(square);
  return Moved(line.start, line.normal, distance, along,
               comesAlongLine ? middle - half : middle + half);
}

std::optional<WorldPoint> MeetingOfCircles(GridPoint a, GridPoint b, double distance) noexcept {
  const WorldPoint half{Difference(b, a).x / 2, Difference(b, a).y / 2};
  const double square = half.x * half.x + half.y * half.y;
  const double ratio = distance * distance / square - 1.0;
  if (!(ratio >= 0.0)) return std::nullopt;
  const double height = std::sqrt(ratio);
  return WorldPoint{a.gx + half.x + half.y * height, a.gy + half.y - half.x * height};
}

}  // namespace

std::optional<WorldPoint> MeetingOf(const RingSides& sides, double distance, Site first,
                                    Site second) noexcept {
  const Line a{sides.Ring()[first / 2], sides.From(first).normal};
  const Line b{sides.Ring()[second / 2], sides.From(second).normal};
  if (RingSides::IsEdge(first)) {
    if (RingSides::IsEdge(second)) return MeetingOfLines(a, b, distance);
    return MeetingWithCircle(a, sides.EndOf(second), distance, true);
  }
  if (RingSides::IsEdge(second)) return MeetingWithCircle(b, sides.EndOf(first), distance, false);
  return MeetingOfCircles(sides.EndOf(first), sides.EndOf(second), distance);
}

}  // namespace zelvan::offset

// What a geometry holds once collections are walked.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "geometry.h"

namespace tool {

// Collections may hold collections; real data nests five or six deep.
inline constexpr int kDeepest = 100;

struct Parts {
  struct Refused {
    std::string reason;
    bool is_polygon;
    std::size_t polygon;  // which one, from 0, where it is one
  };

  std::vector<Polygon> polygons;  // one without points was refused
  std::vector<Refused> refused;

  void Refuse(std::string reason) { refused.push_back({std::move(reason), false, 0}); }
  void RefuseEmpty(const std::string& type) { Refuse("a " + type + " that is empty"); }
  void RefuseType(const std::string& type) {
    const bool vowel = std::string("AEIOU").find(type.front()) != std::string::npos;
    Refuse((vowel ? "an " : "a ") + type + " is no polygon");
  }
  void RefusePolygon(std::string reason) {
    refused.push_back({std::move(reason), true, polygons.size()});
    polygons.emplace_back();
  }

  // Rings with their first point repeated at the end, outer contour first. One with a ring that
  // is none is refused.
  void AddPolygon(std::vector<Ring> closed);
};

// A piece of well-known text (Open Geospatial Consortium): a geometry, or lines that hold none.
struct WktPiece {
  std::size_t first_line = 0;  // from 1
  std::size_t last_line = 0;
  bool begins_geometry = false;
  bool is_heading = false;  // of a table with semicolons
  std::string name;         // what a semicolon parts from the geometry
  std::string srid;         // "SRID=4326"; may be empty
  std::string fault;        // why there is no geometry; else empty
  Parts parts;
};

// The pieces of a text, one after the other. A geometry takes as many lines as it needs, and may
// have a name and an SRID before it, as in "7;SRID=4326;POINT (1 2)", or a name behind it.
// Altitudes and measures are left out, and comments: from # to the end of the line. What is no
// geometry ends where the next one begins, on a line of its own.
class WktText {
 public:
  explicit WktText(std::string_view text) : text_(text) {}

  // @return whether there was one more piece
  bool Next(WktPiece& piece);

  std::size_t Position() const { return at_; }  // behind the last piece

 private:
  std::string_view Line() const;  // the rest of the line
  void MoveTo(std::size_t position);
  bool SkipBlanks();  // @return whether there is more
  void EndLine();
  void SkipText(WktPiece& piece);
  static void ReadName(WktPiece& piece, std::string_view fields);

  std::string_view text_;
  std::size_t at_ = 0;
  std::size_t line_ = 1;
  bool begun_ = false;
};

}  // namespace tool

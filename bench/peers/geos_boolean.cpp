// GEOS's overlay of polygons that it has already got. Timed: GEOSUnion_r or
// GEOSDifference_r of two contours; GEOSUnaryUnion_r of many. Many contours are
// taken away as one collection of parts that do not touch.
#include "combiners.h"
#include "geos_geometry.h"

namespace bench {
namespace {

GeosGeometry Collection(const std::vector<Xyz>& contours, std::size_t first) {
  std::vector<GEOSGeometry*> parts;
  for (std::size_t i = first; i < contours.size(); ++i) {
    parts.push_back(GeosPolygon({contours[i], {}}).release());
  }
  return Checked(GEOSGeom_createCollection_r(Geos(), GEOS_MULTIPOLYGON, parts.data(),
                                             static_cast<unsigned>(parts.size())));
}

class GeosJob : public Job {
 public:
  explicit GeosJob(const BooleanWork& work)
      : operation_(work.operation),
        unary_(operation_ == Operation::kUnion && work.contours.size() > 2),
        first_(unary_ ? Collection(work.contours, 0) : GeosPolygon({work.contours[0], {}})),
        others_(unary_ ? nullptr : Collection(work.contours, 1)) {}

  double Area() override { return GeosAreaOf(answer_); }

 protected:
  void Prepare() override { answer_.reset(); }
  void Run() override { answer_ = Checked(Operate()); }

 private:
  GEOSGeometry* Operate() const {
    if (unary_) return GEOSUnaryUnion_r(Geos(), first_.get());
    if (operation_ == Operation::kUnion) return GEOSUnion_r(Geos(), first_.get(), others_.get());
    return GEOSDifference_r(Geos(), first_.get(), others_.get());
  }

  Operation operation_;
  bool unary_;
  GeosGeometry first_, others_, answer_;
};

}  // namespace

std::unique_ptr<Job> GeosBoolean(const BooleanWork& work) {
  return std::make_unique<GeosJob>(work);
}

}  // namespace bench

// Without GDAL (more_formats.h).
#include "more_formats.h"

namespace tool {

bool ReadsMore(const std::string& /*extension*/) {
  return false;
}

bool WritesMore(const std::string& /*extension*/) {
  return false;
}

std::string MoreRead() {
  return "";
}

std::string MoreWritten() {
  return "";
}

void ReadMore(const std::string& /*file*/, std::size_t /*size*/, const Advance& /*advance*/,
              Gatherer& /*gatherer*/) {
  throw UnreadableFile("needs a program that is built with GDAL");
}

void WriteMore(const std::string& /*output*/, const std::vector<Item>& /*items*/, Show /*show*/,
               const std::string& /*crs*/) {}

bool IsSameCrs(const std::string& a, const std::string& b) {
  return a == b;
}

std::string CrsName(const std::string& crs) {
  return crs;
}

}  // namespace tool

// Stands in for booleans.cpp while the library does not export them.
#include "booleans.h"

namespace tool {

bool HaveBooleans() {
  return false;
}
bool UniteQueued() {
  return false;
}
bool SubtractQueued() {
  return false;
}

}  // namespace tool

#include "booleans.h"

#include <zelvan/zelvan.h>

namespace tool {

bool HaveBooleans() {
  return true;
}
bool UniteQueued() {
  return Union() == 1;
}
bool SubtractQueued() {
  return Substruct() == 1;
}

}  // namespace tool

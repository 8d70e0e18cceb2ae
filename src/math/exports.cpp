// The toolkit's copies are plain, and a compiler that copies plain data calls no
// function. For hosts that bind to the assignments by name the library carries them
// all the same: taking their addresses brings them into being.
#include <zelvan/toolkit.h>

namespace exports {

struct Assignments {
  VECTF& (VECTF::*vector)(const VECTF&);
  MATRX& (MATRX::*matrix)(const MATRX&);
  TFORM& (TFORM::*transform)(const TFORM&);
};

extern const Assignments kAssignments;
const Assignments kAssignments = {&VECTF::operator=, &MATRX::operator=, &TFORM::operator= };

}  // namespace exports

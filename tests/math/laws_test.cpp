// The laws over random numbers; a failure prints its law and seed.
#include <gtest/gtest.h>

#include <random>
#include <type_traits>

#include "math/trial.h"

namespace {

static_assert(sizeof(VECTF) == 24 && sizeof(VECTH) == 32);
static_assert(sizeof(MATRX) == 128 && sizeof(TFORM) == 256);
static_assert(std::is_trivially_copyable_v<VECTF> && std::is_trivially_copyable_v<TFORM>);

// Used before main, as a host's static initialiser may.
const VECTF kEarly = laws::Plus(vec::vYinv(), 2.0, vec::vXdir()) * TFORM::E().mDir;

TEST(Constants, AreOneObjectAndReadyEarly) {
  EXPECT_TRUE(laws::Close(kEarly, VECTF(2, -1, 0)));
  EXPECT_EQ(&vec::vXdir(), &vec::vXdir());
  EXPECT_EQ(&vec::mE(), &vec::mE());
  EXPECT_EQ(&TFORM::E(), &TFORM::E());
  const VECTF sum = laws::Plus(vec::vXinv(), 2, laws::Plus(vec::vYdir(), 2, vec::vZinv()));
  EXPECT_TRUE(
      laws::Close(laws::Plus(laws::Plus(sum, 8, vec::vZdir()), 1, vec::vZero()), VECTF(-1, 2, 4)));
  EXPECT_EQ(TFORM::S(2, 4, 0).mInv.m[2][2], HUGE_VAL);
}

void Hold(const std::vector<laws::Law>& all) {
  for (const laws::Law& law : all) {
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
      laws::Trial trial(std::mt19937_64{seed});
      ASSERT_TRUE(law.holds(trial)) << law.name << ", seed " << seed;
    }
  }
}

TEST(Laws, HoldOfValues) {
  Hold(laws::kValueLaws);
}

TEST(Laws, HoldOfQueries) {
  Hold(laws::kQueryLaws);
}

}  // namespace

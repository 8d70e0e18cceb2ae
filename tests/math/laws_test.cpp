// The laws of the toolkit over random numbers, and what a host builds on.
#include <gtest/gtest.h>

#include <random>
#include <type_traits>

#include "math/numbers.h"

namespace {

static_assert(sizeof(VECTF) == 24 && sizeof(VECTH) == 32);
static_assert(sizeof(MATRX) == 128 && sizeof(TFORM) == 256);
static_assert(std::is_trivially_copyable_v<VECTF> && std::is_trivially_copyable_v<TFORM>);

// Used before main, as a host's static initialiser may.
const VECTF kEarly = vec::vYinv() * (TFORM::T(vec::vXdir()) * TFORM::E()).mDir;

TEST(Toolkit, ConstantsAreOneObjectAndReadyEarly) {
  EXPECT_TRUE(kEarly.x == 1 && kEarly.y == -1 && kEarly.z == 0);
  EXPECT_TRUE(&vec::vXdir() == &vec::vXdir() && &TFORM::E() == &TFORM::E());
  const double* const six[] = {&vec::vXdir().x, &vec::vXinv().x, &vec::vYdir().x,
                               &vec::vYinv().x, &vec::vZdir().x, &vec::vZinv().x};
  for (int i = 0; i < 18; ++i) {
    EXPECT_EQ(six[i / 3][i % 3], i / 6 != i % 3 ? 0 : i / 3 % 2 == 0 ? 1 : -1) << i;
  }
  EXPECT_TRUE(vec::vZero().IsZero());
  EXPECT_EQ(TFORM::S(2, 4, 0).mInv.m[2][2], HUGE_VAL);
}

TEST(Toolkit, LawsHold) {
  for (int law = 0; law < laws::kLaws; ++law) {
    for (std::uint64_t seed = 1; seed <= 3000; ++seed) {
      laws::Numbers numbers(std::mt19937_64{seed});
      ASSERT_TRUE(laws::Holds(law, numbers)) << "law " << law << ", seed " << seed;
    }
  }
}

}  // namespace

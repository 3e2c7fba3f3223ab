#include "analysis/limits.h"

#include <gtest/gtest.h>

namespace bellmark {
namespace {

TEST(Limits, LimitsAreDecimal) {
    EXPECT_FALSE(ExceedsLimit(1 - 0.997, 0.003));
    EXPECT_FALSE(ExceedsLimit(0.1 + 0.2, 0.3));
    EXPECT_TRUE(ExceedsLimit(0.003001, 0.003));
    EXPECT_TRUE(ExceedsLimit(23500.001, 23500.0));
    EXPECT_FALSE(ExceedsLimit(-1, 0));
}

}  // namespace
}  // namespace bellmark

#include "TTypes.h"
#include <gtest/gtest.h>
TEST(Smoke, RectWidth) { EXPECT_EQ(Rect(1, 2, 5, 9).Width(), 4); }

#include "CoreMinimal.h"

#include <gtest/gtest.h>

TEST(ArrayDeathTest, IndexOutOfRangeStopsInsteadOfReadingPastTheBuffer)
{
    TArray<int32> Numbers{1};
    EXPECT_DEATH((void)Numbers[1], "Assertion failed");
    EXPECT_DEATH((void)Numbers[-1], "Assertion failed");
}

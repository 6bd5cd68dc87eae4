#include "CoreMinimal.h"

#include <gtest/gtest.h>

TEST(Map, IteratesInInsertionOrderAndAddReplacesInPlace)
{
    TMap<FString, int32> Map;
    Map.Add(TEXT("zeta"), 1);
    Map.Add(TEXT("alpha"), 2);
    Map.Add(TEXT("Mid"), 3);
    Map.Add(TEXT("ZETA"), 4);

    ASSERT_EQ(Map.Num(), 3);
    TArray<FString> Keys;
    TArray<int32> Values;
    for (const auto& Pair : Map)
    {
        Keys.Add(Pair.Key);
        Values.Add(Pair.Value);
    }
    EXPECT_EQ(Keys, (TArray<FString>{TEXT("zeta"), TEXT("alpha"), TEXT("Mid")}));
    EXPECT_EQ(Values, (TArray<int32>{4, 2, 3}));
    EXPECT_TRUE(Map.Contains(TEXT("mid")));
    EXPECT_EQ(Map.Find(TEXT("nothing")), nullptr);

    Map.Remove(TEXT("zeta"));
    ASSERT_NE(Map.Find(TEXT("MID")), nullptr);
    EXPECT_EQ(*Map.Find(TEXT("MID")), 3);
    EXPECT_EQ(Map.begin()->Key.GetStd(), u"alpha");
}

TEST(ArrayDeathTest, IndexOutOfRangeStopsInsteadOfReadingPastTheBuffer)
{
    TArray<int32> Numbers{1};
    EXPECT_DEATH((void)Numbers[1], "Assertion failed");
    EXPECT_DEATH((void)Numbers[-1], "Assertion failed");
}

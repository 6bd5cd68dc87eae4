#include "CoreMinimal.h"

#include <gtest/gtest.h>

TEST(String, SanitizeFloatKeepsMinimumFractionalDigits)
{
    EXPECT_EQ(FString::SanitizeFloat(0.0), FString(TEXT("0.0")));
    EXPECT_EQ(FString::SanitizeFloat(0.25), FString(TEXT("0.25")));
    EXPECT_EQ(FString::SanitizeFloat(2.0), FString(TEXT("2.0")));
}

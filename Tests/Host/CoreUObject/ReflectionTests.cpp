#include "TestTypes.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST(Reflection, ConcurrentFirstRequestsGetTheSameDescriptor)
{
    std::vector<UScriptStruct*> Seen(8);
    std::vector<std::thread> Threads;
    for (UScriptStruct*& Slot : Seen)
    {
        Threads.emplace_back([&Slot] { Slot = FTestInner::StaticStruct(); });
    }
    for (std::thread& Thread : Threads)
    {
        Thread.join();
    }
    for (UScriptStruct* Descriptor : Seen)
    {
        EXPECT_EQ(Descriptor, Seen[0]);
    }
}

TEST(Reflection, EnumeratorsHaveFullNamesFoundInAnyCase)
{
    // Values written by name are ObjectConfig's test (Colour=Blue).
    UEnum* const Colour = StaticEnum<ETestColour>();
    UEnum* Matching = nullptr;
    EXPECT_EQ(UEnum::LookupEnumName(NAME_None, TEXT("etestcolour::GREEN"), EFindFirstObjectOptions::None,
                                    &Matching),
              1);
    EXPECT_EQ(Matching, Colour);
    EXPECT_EQ(UEnum::LookupEnumName(NAME_None, TEXT("Green")), INDEX_NONE);
    EXPECT_EQ(UEnum::LookupEnumName(NAME_None, TEXT("ETestColour::")), INDEX_NONE);
    EXPECT_EQ(UEnum::LookupEnumName(TEXT("/Script/Elsewhere"), TEXT("ETestColour::Green")), INDEX_NONE);
    // Known only from the queued registration: nothing asked for its descriptor.
    EXPECT_EQ(UEnum::LookupEnumName(FName(), TEXT("ETestQueued::Only")), 7);
}

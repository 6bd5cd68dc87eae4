#include "TestTypes.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

TEST(Reflection, RecordDescriptorsAreBuiltOnceAndKnowEveryMembersType)
{
    UScriptStruct* const Record = FTestRecord::StaticStruct();
    ASSERT_NE(Record, nullptr);
    EXPECT_EQ(StaticStruct<FTestRecord>(), Record);
    EXPECT_EQ(Record->GetPathName().GetStd(), u"/Script/OrvaneTests.TestRecord");
    EXPECT_EQ(Record->GetProperties().Num(), 11);
    EXPECT_EQ(Record->FindPropertyByName(TEXT("Missing")), nullptr);
    // Flags, categories and metadata are the registration table read back; the member
    // types below are what the descriptors work out for themselves.
    EXPECT_NE(Record->FindPropertyByName(TEXT("name")), nullptr);

    EXPECT_EQ(Record->FindPropertyByName(TEXT("Inner"))->GetStruct(), FTestInner::StaticStruct());
    EXPECT_EQ(Record->FindPropertyByName(TEXT("Id"))->GetStruct(), StaticStruct<FGuid>());
    EXPECT_EQ(Record->FindPropertyByName(TEXT("Position"))->GetStruct(), StaticStruct<FVector>());
    EXPECT_NE(StaticStruct<FVector>()->FindPropertyByName(TEXT("Z")), nullptr);
    EXPECT_EQ(Record->FindPropertyByName(TEXT("Colour"))->GetEnum(), StaticEnum<ETestColour>());
    const FPropertyType& Inners = Record->FindPropertyByName(TEXT("Inners"))->GetType();
    EXPECT_EQ(Inners.Kind, EPropertyKind::Array);
    EXPECT_EQ(Inners.Inner->GetStruct(), FTestInner::StaticStruct());
    EXPECT_EQ(Record->FindPropertyByName(TEXT("Bytes"))->GetType().Inner->Kind, EPropertyKind::Byte);
}

TEST(Reflection, MembersAreReachedThroughTheirDescriptors)
{
    FTestRecord Value;
    *FTestRecord::StaticStruct()->FindPropertyByName(TEXT("Count"))->ContainerPtrToValuePtr<int32>(&Value) =
        7;
    EXPECT_EQ(Value.Count, 7);
    UTestSettings* const Settings = GetMutableDefault<UTestSettings>();
    EXPECT_EQ(UTestSettings::StaticClass()
                  ->FindPropertyByName(TEXT("Url"))
                  ->ContainerPtrToValuePtr<FString>(Settings),
              &Settings->Url);
}

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
    UEnum* const Colour = StaticEnum<ETestColour>();
    EXPECT_EQ(Colour->GetNameByValue(5).ToString().GetStd(), u"ETestColour::Blue");
    EXPECT_TRUE(Colour->GetNameByValue(2).IsNone());
    EXPECT_EQ(Colour->NumEnums(), 3);
    EXPECT_EQ(Colour->GetValueByIndex(2), 5);

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

TEST(Reflection, ClassesHaveOneDefaultObjectAndTheirParentsMembers)
{
    UClass* const Class = UTestSettings::StaticClass();
    EXPECT_EQ(StaticClass<UTestSettings>(), Class);
    EXPECT_TRUE(Class->IsChildOf(UObject::StaticClass()));
    EXPECT_FALSE(UObject::StaticClass()->IsChildOf(Class));
    EXPECT_EQ(Class->GetPathName().GetStd(), u"/Script/OrvaneTests.TestSettings");

    UTestSettings* const Default = GetMutableDefault<UTestSettings>();
    ASSERT_NE(Default, nullptr);
    EXPECT_EQ(GetDefault<UTestSettings>(), Default);
    EXPECT_EQ(Class->GetDefaultObject(false), Default);
    EXPECT_EQ(Default->GetClass(), Class);
    EXPECT_EQ(Default->GetName().GetStd(), u"Default__TestSettings");
}

#include "CadrelBlendShapeType.h"
#include "Setting/CadrelSetting.h"

#include <gtest/gtest.h>

#include <string>

// Every record the module registers.
#define CADREL_RECORDS(Apply)                                                                                \
    Apply(FEyeMovementParameters);                                                                           \
    Apply(FNeckMovementParameters);                                                                          \
    Apply(FCadrelZELInfo);                                                                                   \
    Apply(FCadrelIOAttributes);                                                                              \
    Apply(FCadrelIORequestData);                                                                             \
    Apply(FCadrelIORequestMeta);                                                                             \
    Apply(FCadrelZELRequest);                                                                                \
    Apply(FCadrelZELRequestParam);                                                                           \
    Apply(FCadrelZELBones);                                                                                  \
    Apply(FCadrelFaceFrames);                                                                                \
    Apply(FCadrelZELResponse);                                                                               \
    Apply(FAudio2FaceBlendShapeWeightMat);                                                                   \
    Apply(FCadrelAudio2FaceBlendShapeInfo);                                                                  \
    Apply(FCadrelVelkInfo);                                                                                  \
    Apply(FCadrelVelkStreamQueueElement)

// As other modules' generated code declares them.
#define CADREL_DECLARE_CONSTRUCT(Type) CADRELBLENDSHAPE_API UScriptStruct* Z_Construct_UScriptStruct_##Type()
CADREL_RECORDS(CADREL_DECLARE_CONSTRUCT);
CADRELBLENDSHAPE_API UClass* Z_Construct_UClass_UCadrelSetting();
CADRELBLENDSHAPE_API UClass* Z_Construct_UClass_UCadrelSetting_NoRegister();
CADRELBLENDSHAPE_API UEnum* Z_Construct_UEnum_CadrelBlendShape_ECadrelExplicitEmotion();

namespace
{
template <typename T> void ExpectRecord(const std::string& Type, UScriptStruct* Constructed)
{
    SCOPED_TRACE(Type);
    UScriptStruct* const Struct = T::StaticStruct();
    EXPECT_EQ(StaticStruct<T>(), Struct);
    EXPECT_EQ(Constructed, Struct);
    EXPECT_FALSE(Struct->GetProperties().IsEmpty());
}
} // namespace

// Which members each record and the settings have, their names, flags and category, are the
// registration table itself; that the settings' members are saved, in the section their
// path names, is the module's start-up test.
TEST(CadrelRegistration, EveryRecordHasOneDescriptorKnownToOtherModules)
{
#define CADREL_EXPECT_RECORD(Type) ExpectRecord<Type>(#Type, Z_Construct_UScriptStruct_##Type())
    CADREL_RECORDS(CADREL_EXPECT_RECORD);
#undef CADREL_EXPECT_RECORD
}

TEST(CadrelRegistration, TheSettingsClassAndEnumeratorsAreKnownByTheirModulesNames)
{
    UClass* const Class = UCadrelSetting::StaticClass();
    EXPECT_EQ(Z_Construct_UClass_UCadrelSetting(), Class);
    EXPECT_EQ(Z_Construct_UClass_UCadrelSetting_NoRegister(), Class);

    UEnum* const Emotion = StaticEnum<ECadrelExplicitEmotion>();
    EXPECT_EQ(Z_Construct_UEnum_CadrelBlendShape_ECadrelExplicitEmotion(), Emotion);
    EXPECT_EQ(UEnum::LookupEnumName(FName(), TEXT("eblendshapetype::virethio")), 1);
    EXPECT_EQ(UEnum::LookupEnumName(TEXT("/Script/CadrelBlendShape"), TEXT("ECadrelRigType::CUSTOM")), 1);
    EXPECT_EQ(UEnum::LookupEnumName(FName(), TEXT("ECadrelExplicitEmotion::CEE_Wrath")), 18);
}

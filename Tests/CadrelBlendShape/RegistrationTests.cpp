#include "CadrelBlendShapeType.h"
#include "Setting/CadrelSetting.h"

#include <gtest/gtest.h>

#include <stdexcept>
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
    EXPECT_EQ(Struct->GetPathName().ToUTF8(), "/Script/CadrelBlendShape." + Type.substr(1));
    EXPECT_TRUE(Struct->HasAnyTypeFlags(TF_ScriptType));
    EXPECT_FALSE(Struct->GetProperties().IsEmpty());
}

const FProperty& Member(const UStruct* Struct, const TCHAR* Name)
{
    const FProperty* const Property = Struct->FindPropertyByName(Name);
    if (!Property)
    {
        throw std::runtime_error("no member " + FString(Name).ToUTF8());
    }
    return *Property;
}
} // namespace

// Which members each record has, and under which category, is the registration table itself.
TEST(CadrelRegistration, EveryRecordHasOneDescriptorKnownToOtherModules)
{
#define CADREL_EXPECT_RECORD(Type) ExpectRecord<Type>(#Type, Z_Construct_UScriptStruct_##Type())
    CADREL_RECORDS(CADREL_EXPECT_RECORD);
#undef CADREL_EXPECT_RECORD
}

TEST(CadrelRegistration, VisualScriptsSeeOnlyWhatTheyMayTouch)
{
    const FProperty& Stream = Member(FCadrelZELRequestParam::StaticStruct(), TEXT("bStream"));
    EXPECT_TRUE(Stream.IsEditable());
    EXPECT_FALSE(Stream.IsScriptVisible());
    const FProperty& Execute = Member(FCadrelVelkStreamQueueElement::StaticStruct(), TEXT("bExecute"));
    EXPECT_TRUE(Execute.IsScriptVisible() && !Execute.IsScriptReadOnly());
    EXPECT_TRUE(Member(FCadrelZELInfo::StaticStruct(), TEXT("Platform")).IsScriptReadOnly());
    for (const TCHAR* Name : {TEXT("Platform"), TEXT("PlatformVersion"), TEXT("bEditor"),
                              TEXT("PluginVersion"), TEXT("OS"), TEXT("Local"), TEXT("PrevType")})
    {
        const FProperty& Field = Member(FCadrelIORequestMeta::StaticStruct(), Name);
        EXPECT_TRUE(Field.IsEditable() && Field.IsScriptVisible());
        EXPECT_EQ(Field.IsScriptReadOnly(), Field.GetName() != TEXT("PrevType")) << Field.GetName().ToUTF8();
    }
    for (const FProperty* Property : UCadrelSetting::StaticClass()->GetProperties())
    {
        EXPECT_TRUE(Property->IsEditable() && Property->IsConfig() && !Property->IsScriptVisible());
        EXPECT_EQ(Property->GetCategory(), TEXT("Cadrel"));
        EXPECT_TRUE(Property->HasMetaData(TEXT("ToolTip")) &&
                    Property->GetMetaData(TEXT("ToolTip")).IsEmpty());
    }
}

TEST(CadrelRegistration, TheSettingsClassAndEnumeratorsAreKnownByTheirModulesNames)
{
    UClass* const Class = UCadrelSetting::StaticClass();
    EXPECT_EQ(Z_Construct_UClass_UCadrelSetting(), Class);
    EXPECT_EQ(Z_Construct_UClass_UCadrelSetting_NoRegister(), Class);
    EXPECT_EQ(Class->GetPathName(), TEXT("/Script/CadrelBlendShape.CadrelSetting"));
    EXPECT_EQ(FString(UCadrelSetting::StaticConfigName()), TEXT("Cadrel"));
    EXPECT_EQ(Member(Class, TEXT("TimeStamp")).GetKind(), EPropertyKind::Int64);

    UEnum* const Emotion = StaticEnum<ECadrelExplicitEmotion>();
    EXPECT_EQ(Z_Construct_UEnum_CadrelBlendShape_ECadrelExplicitEmotion(), Emotion);
    ASSERT_EQ(Emotion->NumEnums(), 19);
    EXPECT_EQ(UEnum::LookupEnumName(FName(), TEXT("eblendshapetype::virethio")), 1);
    EXPECT_EQ(UEnum::LookupEnumName(TEXT("/Script/CadrelBlendShape"), TEXT("ECadrelRigType::CUSTOM")), 1);
    EXPECT_EQ(UEnum::LookupEnumName(FName(), TEXT("ECadrelExplicitEmotion::CEE_Wrath")), 18);
}

#include "CadrelBlendShapeType.h"
#include "Setting/CadrelSetting.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>

// Record, category of its members, members in order.
#define CADREL_RECORDS(Apply)                                                                                \
    Apply(FEyeMovementParameters, "Parameters", "bEyeMovementMode");                                         \
    Apply(FNeckMovementParameters, "Parameters", "bNeckMovementMode");                                       \
    Apply(FCadrelZELInfo, "ZEL",                                                                             \
          "Platform RigVersion RigType Engine AnswerFormat ExplicitEmotion EyeMovementParameters "           \
          "NeckMovementParameters");                                                                         \
    Apply(FCadrelIOAttributes, "Attributes", "Zel");                                                         \
    Apply(FCadrelIORequestData, "IORequestData", "ID Type Attributes");                                      \
    Apply(FCadrelIORequestMeta, "RequestMeta",                                                               \
          "Platform PlatformVersion bEditor PluginVersion OS Local PrevType PrevSize Latency "               \
          "PrevAudioLength");                                                                                \
    Apply(FCadrelZELRequest, "Request", "Data Meta");                                                        \
    Apply(FCadrelZELRequestParam, "Request", "ID Index MainIndex Token LinkServerType bStream");             \
    Apply(FCadrelZELBones, "Frames", "BoneName BoneValue");                                                  \
    Apply(FCadrelFaceFrames, "Frames", "Blendshapes Bones");                                                 \
    Apply(FCadrelZELResponse, "Response", "Version Platform FPS Frames BlendShapesNames BonesNames");        \
    Apply(FAudio2FaceBlendShapeWeightMat, "Weight", "Weight");                                               \
    Apply(FCadrelAudio2FaceBlendShapeInfo, "Audio2FaceBlendShape",                                           \
          "ExportFps TrackPath NumPoses NumFrames FacsNames WeightMat");                                     \
    Apply(FCadrelVelkInfo, "Velk", "VelkHost VelkPort AudioPort AudioTime");                                 \
    Apply(FCadrelVelkStreamQueueElement, "Velk", "ZELInfo Param AudioData CurrentDelayTime bExecute")

// As other modules' generated code declares them.
#define CADREL_DECLARE_CONSTRUCT(Type, Category, Members)                                                    \
    CADRELBLENDSHAPE_API UScriptStruct* Z_Construct_UScriptStruct_##Type()
CADREL_RECORDS(CADREL_DECLARE_CONSTRUCT);
CADRELBLENDSHAPE_API UClass* Z_Construct_UClass_UCadrelSetting();
CADRELBLENDSHAPE_API UClass* Z_Construct_UClass_UCadrelSetting_NoRegister();
CADRELBLENDSHAPE_API UEnum* Z_Construct_UEnum_CadrelBlendShape_ECadrelExplicitEmotion();

namespace
{
template <typename T>
void ExpectRecord(const std::string& Type, UScriptStruct* Constructed, const TCHAR* Category,
                  const std::string& Members)
{
    SCOPED_TRACE(Type);
    UScriptStruct* const Struct = T::StaticStruct();
    EXPECT_EQ(T::StaticStruct(), Struct);
    EXPECT_EQ(StaticStruct<T>(), Struct);
    EXPECT_EQ(Constructed, Struct);
    EXPECT_EQ(Struct->GetPathName().ToUTF8(), "/Script/CadrelBlendShape." + Type.substr(1));
    EXPECT_TRUE(Struct->HasAnyTypeFlags(TF_ScriptType));
    EXPECT_EQ(Struct->GetMetaData(TEXT("ModuleRelativePath")), TEXT("Public/CadrelBlendShapeType.h"));
    std::string Names;
    for (const FProperty* Property : Struct->GetProperties())
    {
        Names += (Names.empty() ? "" : " ") + Property->GetName().ToUTF8();
        EXPECT_EQ(Property->GetCategory(),
                  Property->GetName() == TEXT("bStream") ? FString(TEXT("Request|Audio2Face")) : Category);
    }
    EXPECT_EQ(Names, Members);
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

TEST(CadrelRegistration, EveryRecordHasOneDescriptorWithItsMembersAndCategory)
{
#define CADREL_EXPECT_RECORD(Type, Category, Members)                                                        \
    ExpectRecord<Type>(#Type, Z_Construct_UScriptStruct_##Type(), TEXT(Category), Members)
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

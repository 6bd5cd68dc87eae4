// Reflection tables of the records and enumerations of CadrelBlendShapeType.h:
// adding a field takes one row here beside its declaration there.

#include "CadrelBlendShapeType.h"

#include "CadrelBlendShape.init.gen.h"

namespace
{
using namespace CadrelBlendShapeReflection;

constexpr FMetaDataPair TypesHeader[] = {{TEXT("ModuleRelativePath"), TEXT("Public/CadrelBlendShapeType.h")}};

constexpr FEnumeratorParams BlendShapeTypeEnumerators[] = {
    ORV_ENUMERATOR(EBlendShapeType, AUDIO2FACE),
    ORV_ENUMERATOR(EBlendShapeType, VIRETHIO),
};
constexpr FEnumParams BlendShapeTypeParams{TEXT("EBlendShapeType"), Package, BlendShapeTypeEnumerators,
                                           TF_ScriptType, TypesHeader};

constexpr FEnumeratorParams RigTypeEnumerators[] = {
    ORV_ENUMERATOR(ECadrelRigType, VIRETH),
    ORV_ENUMERATOR(ECadrelRigType, CUSTOM),
};
constexpr FEnumParams RigTypeParams{TEXT("ECadrelRigType"), Package, RigTypeEnumerators, TF_ScriptType,
                                    TypesHeader};

constexpr FEnumeratorParams ExplicitEmotionEnumerators[] = {
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Angry),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Calm),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Curious),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Disgust),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Doubt),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Dreamy),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Embarrassment),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Fear),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Flirt),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Happy),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Playful),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Positive),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Resentment),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Shame),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Sorrow),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Strict),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Supplication),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Surprise),
    ORV_ENUMERATOR(ECadrelExplicitEmotion, CEE_Wrath),
};
constexpr FEnumParams ExplicitEmotionParams{TEXT("ECadrelExplicitEmotion"), Package,
                                            ExplicitEmotionEnumerators, TF_ScriptType, TypesHeader};

// A record registered under its name without the F, usable in visual scripts.
constexpr FStructParams MakeRecord(const TCHAR* Name, std::span<const FPropertyParams> Properties)
{
    return FStructParams{Name, Package, Properties, TF_ScriptType, TypesHeader};
}

// Request records.

constexpr FPropertyParams EyeMovementProperties[] = {
    ORV_PROPERTY(FEyeMovementParameters, bEyeMovementMode, ReadWrite, TEXT("Parameters")),
};
constexpr FStructParams EyeMovementParams = MakeRecord(TEXT("EyeMovementParameters"), EyeMovementProperties);

constexpr FPropertyParams NeckMovementProperties[] = {
    ORV_PROPERTY(FNeckMovementParameters, bNeckMovementMode, ReadWrite, TEXT("Parameters")),
};
constexpr FStructParams NeckMovementParams =
    MakeRecord(TEXT("NeckMovementParameters"), NeckMovementProperties);

constexpr FPropertyParams ZELInfoProperties[] = {
    // The server knows the client's platform from it; scripts must not change it.
    ORV_PROPERTY(FCadrelZELInfo, Platform, ReadOnly, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, RigVersion, ReadWrite, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, RigType, ReadWrite, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, Engine, ReadWrite, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, AnswerFormat, ReadWrite, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, ExplicitEmotion, ReadWrite, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, EyeMovementParameters, ReadWrite, TEXT("ZEL")),
    ORV_PROPERTY(FCadrelZELInfo, NeckMovementParameters, ReadWrite, TEXT("ZEL")),
};
constexpr FStructParams ZELInfoParams = MakeRecord(TEXT("CadrelZELInfo"), ZELInfoProperties);

constexpr FPropertyParams IOAttributesProperties[] = {
    ORV_PROPERTY(FCadrelIOAttributes, Zel, ReadWrite, TEXT("Attributes")),
};
constexpr FStructParams IOAttributesParams = MakeRecord(TEXT("CadrelIOAttributes"), IOAttributesProperties);

constexpr FPropertyParams IORequestDataProperties[] = {
    ORV_PROPERTY(FCadrelIORequestData, ID, ReadWrite, TEXT("IORequestData")),
    ORV_PROPERTY(FCadrelIORequestData, Type, ReadWrite, TEXT("IORequestData")),
    ORV_PROPERTY(FCadrelIORequestData, Attributes, ReadWrite, TEXT("IORequestData")),
};
constexpr FStructParams IORequestDataParams =
    MakeRecord(TEXT("CadrelIORequestData"), IORequestDataProperties);

constexpr FPropertyParams IORequestMetaProperties[] = {
    // Facts about the sender come from the host, not from scripts.
    ORV_PROPERTY(FCadrelIORequestMeta, Platform, ReadOnly, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, PlatformVersion, ReadOnly, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, bEditor, ReadOnly, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, PluginVersion, ReadOnly, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, OS, ReadOnly, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, Local, ReadOnly, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, PrevType, ReadWrite, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, PrevSize, ReadWrite, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, Latency, ReadWrite, TEXT("RequestMeta")),
    ORV_PROPERTY(FCadrelIORequestMeta, PrevAudioLength, ReadWrite, TEXT("RequestMeta")),
};
constexpr FStructParams IORequestMetaParams =
    MakeRecord(TEXT("CadrelIORequestMeta"), IORequestMetaProperties);

constexpr FPropertyParams ZELRequestProperties[] = {
    ORV_PROPERTY(FCadrelZELRequest, Data, ReadWrite, TEXT("Request")),
    ORV_PROPERTY(FCadrelZELRequest, Meta, ReadWrite, TEXT("Request")),
};
constexpr FStructParams ZELRequestParams = MakeRecord(TEXT("CadrelZELRequest"), ZELRequestProperties);

constexpr FPropertyParams ZELRequestParamProperties[] = {
    ORV_PROPERTY(FCadrelZELRequestParam, ID, ReadWrite, TEXT("Request")),
    ORV_PROPERTY(FCadrelZELRequestParam, Index, ReadWrite, TEXT("Request")),
    ORV_PROPERTY(FCadrelZELRequestParam, MainIndex, ReadWrite, TEXT("Request")),
    ORV_PROPERTY(FCadrelZELRequestParam, Token, ReadWrite, TEXT("Request")),
    ORV_PROPERTY(FCadrelZELRequestParam, LinkServerType, ReadWrite, TEXT("Request")),
    // Whether a request is a stream chunk is the stream queue's business, not a script's.
    ORV_PROPERTY(FCadrelZELRequestParam, bStream, PanelOnly, TEXT("Request|Audio2Face")),
};
constexpr FStructParams ZELRequestParamParams =
    MakeRecord(TEXT("CadrelZELRequestParam"), ZELRequestParamProperties);

// Response records.

constexpr FPropertyParams ZELBonesProperties[] = {
    ORV_PROPERTY(FCadrelZELBones, BoneName, ReadWrite, TEXT("Frames")),
    ORV_PROPERTY(FCadrelZELBones, BoneValue, ReadWrite, TEXT("Frames")),
};
constexpr FStructParams ZELBonesParams = MakeRecord(TEXT("CadrelZELBones"), ZELBonesProperties);

constexpr FPropertyParams FaceFramesProperties[] = {
    ORV_PROPERTY(FCadrelFaceFrames, Blendshapes, ReadWrite, TEXT("Frames")),
    ORV_PROPERTY(FCadrelFaceFrames, Bones, ReadWrite, TEXT("Frames")),
};
constexpr FStructParams FaceFramesParams = MakeRecord(TEXT("CadrelFaceFrames"), FaceFramesProperties);

constexpr FPropertyParams ZELResponseProperties[] = {
    ORV_PROPERTY(FCadrelZELResponse, Version, ReadWrite, TEXT("Response")),
    ORV_PROPERTY(FCadrelZELResponse, Platform, ReadWrite, TEXT("Response")),
    ORV_PROPERTY(FCadrelZELResponse, FPS, ReadWrite, TEXT("Response")),
    ORV_PROPERTY(FCadrelZELResponse, Frames, ReadWrite, TEXT("Response")),
    ORV_PROPERTY(FCadrelZELResponse, BlendShapesNames, ReadWrite, TEXT("Response")),
    ORV_PROPERTY(FCadrelZELResponse, BonesNames, ReadWrite, TEXT("Response")),
};
constexpr FStructParams ZELResponseParams = MakeRecord(TEXT("CadrelZELResponse"), ZELResponseProperties);

constexpr FPropertyParams WeightMatProperties[] = {
    ORV_PROPERTY(FAudio2FaceBlendShapeWeightMat, Weight, ReadWrite, TEXT("Weight")),
};
constexpr FStructParams WeightMatParams =
    MakeRecord(TEXT("Audio2FaceBlendShapeWeightMat"), WeightMatProperties);

constexpr FPropertyParams Audio2FaceInfoProperties[] = {
    ORV_PROPERTY(FCadrelAudio2FaceBlendShapeInfo, ExportFps, ReadWrite, TEXT("Audio2FaceBlendShape")),
    ORV_PROPERTY(FCadrelAudio2FaceBlendShapeInfo, TrackPath, ReadWrite, TEXT("Audio2FaceBlendShape")),
    ORV_PROPERTY(FCadrelAudio2FaceBlendShapeInfo, NumPoses, ReadWrite, TEXT("Audio2FaceBlendShape")),
    ORV_PROPERTY(FCadrelAudio2FaceBlendShapeInfo, NumFrames, ReadWrite, TEXT("Audio2FaceBlendShape")),
    ORV_PROPERTY(FCadrelAudio2FaceBlendShapeInfo, FacsNames, ReadWrite, TEXT("Audio2FaceBlendShape")),
    ORV_PROPERTY(FCadrelAudio2FaceBlendShapeInfo, WeightMat, ReadWrite, TEXT("Audio2FaceBlendShape")),
};
constexpr FStructParams Audio2FaceInfoParams =
    MakeRecord(TEXT("CadrelAudio2FaceBlendShapeInfo"), Audio2FaceInfoProperties);

// Stream records. The queue element's end-play delegate is no reflected type.

constexpr FPropertyParams VelkInfoProperties[] = {
    ORV_PROPERTY(FCadrelVelkInfo, VelkHost, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkInfo, VelkPort, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkInfo, AudioPort, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkInfo, AudioTime, ReadWrite, TEXT("Velk")),
};
constexpr FStructParams VelkInfoParams = MakeRecord(TEXT("CadrelVelkInfo"), VelkInfoProperties);

constexpr FPropertyParams QueueElementProperties[] = {
    ORV_PROPERTY(FCadrelVelkStreamQueueElement, ZELInfo, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkStreamQueueElement, Param, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkStreamQueueElement, AudioData, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkStreamQueueElement, CurrentDelayTime, ReadWrite, TEXT("Velk")),
    ORV_PROPERTY(FCadrelVelkStreamQueueElement, bExecute, ReadWrite, TEXT("Velk")),
};
constexpr FStructParams QueueElementParams =
    MakeRecord(TEXT("CadrelVelkStreamQueueElement"), QueueElementProperties);

constexpr const FStructParams* Records[] = {
    &EyeMovementParams,    &NeckMovementParams,  &ZELInfoParams,      &IOAttributesParams,
    &IORequestDataParams,  &IORequestMetaParams, &ZELRequestParams,   &ZELRequestParamParams,
    &ZELBonesParams,       &FaceFramesParams,    &ZELResponseParams,  &WeightMatParams,
    &Audio2FaceInfoParams, &VelkInfoParams,      &QueueElementParams,
};
constexpr const FEnumParams* Enumerations[] = {&BlendShapeTypeParams, &RigTypeParams, &ExplicitEmotionParams};
const FCompiledInRegistration Registration({}, Records, Enumerations);
} // namespace

ORV_IMPLEMENT_ENUM(EBlendShapeType, BlendShapeTypeParams)
ORV_IMPLEMENT_ENUM(ECadrelRigType, RigTypeParams)
ORV_IMPLEMENT_ENUM(ECadrelExplicitEmotion, ExplicitEmotionParams)

ORV_IMPLEMENT_STRUCT(FEyeMovementParameters, EyeMovementParams)
ORV_IMPLEMENT_STRUCT(FNeckMovementParameters, NeckMovementParams)
ORV_IMPLEMENT_STRUCT(FCadrelZELInfo, ZELInfoParams)
ORV_IMPLEMENT_STRUCT(FCadrelIOAttributes, IOAttributesParams)
ORV_IMPLEMENT_STRUCT(FCadrelIORequestData, IORequestDataParams)
ORV_IMPLEMENT_STRUCT(FCadrelIORequestMeta, IORequestMetaParams)
ORV_IMPLEMENT_STRUCT(FCadrelZELRequest, ZELRequestParams)
ORV_IMPLEMENT_STRUCT(FCadrelZELRequestParam, ZELRequestParamParams)
ORV_IMPLEMENT_STRUCT(FCadrelZELBones, ZELBonesParams)
ORV_IMPLEMENT_STRUCT(FCadrelFaceFrames, FaceFramesParams)
ORV_IMPLEMENT_STRUCT(FCadrelZELResponse, ZELResponseParams)
ORV_IMPLEMENT_STRUCT(FAudio2FaceBlendShapeWeightMat, WeightMatParams)
ORV_IMPLEMENT_STRUCT(FCadrelAudio2FaceBlendShapeInfo, Audio2FaceInfoParams)
ORV_IMPLEMENT_STRUCT(FCadrelVelkInfo, VelkInfoParams)
ORV_IMPLEMENT_STRUCT(FCadrelVelkStreamQueueElement, QueueElementParams)

// Entry points through which other modules' generated code reaches these types.
#define CADREL_CONSTRUCT_ENUM(Type)                                                                          \
    CADRELBLENDSHAPE_API UEnum* Z_Construct_UEnum_CadrelBlendShape_##Type()                                  \
    {                                                                                                        \
        return StaticEnum<Type>();                                                                           \
    }
#define CADREL_CONSTRUCT_STRUCT(Type)                                                                        \
    CADRELBLENDSHAPE_API UScriptStruct* Z_Construct_UScriptStruct_##Type()                                   \
    {                                                                                                        \
        return Type::StaticStruct();                                                                         \
    }

CADREL_CONSTRUCT_ENUM(EBlendShapeType)
CADREL_CONSTRUCT_ENUM(ECadrelRigType)
CADREL_CONSTRUCT_ENUM(ECadrelExplicitEmotion)

CADREL_CONSTRUCT_STRUCT(FEyeMovementParameters)
CADREL_CONSTRUCT_STRUCT(FNeckMovementParameters)
CADREL_CONSTRUCT_STRUCT(FCadrelZELInfo)
CADREL_CONSTRUCT_STRUCT(FCadrelIOAttributes)
CADREL_CONSTRUCT_STRUCT(FCadrelIORequestData)
CADREL_CONSTRUCT_STRUCT(FCadrelIORequestMeta)
CADREL_CONSTRUCT_STRUCT(FCadrelZELRequest)
CADREL_CONSTRUCT_STRUCT(FCadrelZELRequestParam)
CADREL_CONSTRUCT_STRUCT(FCadrelZELBones)
CADREL_CONSTRUCT_STRUCT(FCadrelFaceFrames)
CADREL_CONSTRUCT_STRUCT(FCadrelZELResponse)
CADREL_CONSTRUCT_STRUCT(FAudio2FaceBlendShapeWeightMat)
CADREL_CONSTRUCT_STRUCT(FCadrelAudio2FaceBlendShapeInfo)
CADREL_CONSTRUCT_STRUCT(FCadrelVelkInfo)
CADREL_CONSTRUCT_STRUCT(FCadrelVelkStreamQueueElement)

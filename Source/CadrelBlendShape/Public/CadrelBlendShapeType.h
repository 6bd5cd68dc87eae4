#pragma once

#include "CoreMinimal.h"
#include "UObject/Class.h"

// The kind of lipsync server a request goes to.
enum class EBlendShapeType : uint8
{
    AUDIO2FACE = 0,
    VIRETHIO = 1,
};
template <> CADRELBLENDSHAPE_API UEnum* StaticEnum<EBlendShapeType>();

// The kind of face rig an animation is made for.
enum class ECadrelRigType : uint8
{
    VIRETH = 0,
    CUSTOM = 1,
};
template <> CADRELBLENDSHAPE_API UEnum* StaticEnum<ECadrelRigType>();

// The emotion an animation is to express; the server knows each by its name
// without the prefix, in lower case.
enum class ECadrelExplicitEmotion : uint8
{
    CEE_Angry = 0,
    CEE_Calm,
    CEE_Curious,
    CEE_Disgust,
    CEE_Doubt,
    CEE_Dreamy,
    CEE_Embarrassment,
    CEE_Fear,
    CEE_Flirt,
    CEE_Happy,
    CEE_Playful,
    CEE_Positive,
    CEE_Resentment,
    CEE_Shame,
    CEE_Sorrow,
    CEE_Strict,
    CEE_Supplication,
    CEE_Surprise,
    CEE_Wrath,
};
template <> CADRELBLENDSHAPE_API UEnum* StaticEnum<ECadrelExplicitEmotion>();

struct CADRELBLENDSHAPE_API FEyeMovementParameters
{
    // True asks the server for captured ("mocap") eye movement.
    bool bEyeMovementMode = false;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FEyeMovementParameters>();

struct CADRELBLENDSHAPE_API FNeckMovementParameters
{
    // True asks the server for captured ("mocap") neck movement.
    bool bNeckMovementMode = false;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FNeckMovementParameters>();

// What animation the server is to make.
struct CADRELBLENDSHAPE_API FCadrelZELInfo
{
    FString Platform = TEXT("orvane");
    FString RigVersion = TEXT("shapes_2.0");
    ECadrelRigType RigType = ECadrelRigType::VIRETH;
    FString Engine = TEXT("latest");
    FString AnswerFormat = TEXT("json-anim");
    ECadrelExplicitEmotion ExplicitEmotion = ECadrelExplicitEmotion::CEE_Calm;
    FEyeMovementParameters EyeMovementParameters;
    FNeckMovementParameters NeckMovementParameters;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelZELInfo>();

struct CADRELBLENDSHAPE_API FCadrelIOAttributes
{
    FCadrelZELInfo Zel;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelIOAttributes>();

struct CADRELBLENDSHAPE_API FCadrelIORequestData
{
    // Every new request gets its own identifier; copies keep the source's.
    FGuid ID = FGuid::NewGuid();
    FString Type = TEXT("cadrel");
    FCadrelIOAttributes Attributes;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelIORequestData>();

// Who asks, and how the previous exchange went.
struct CADRELBLENDSHAPE_API FCadrelIORequestMeta
{
    // Takes the plug-in's version name and the current culture from the host.
    FCadrelIORequestMeta();

    FString Platform = TEXT("orvane");
    // A fixed text that the server expects; it is not the running host's version.
    FString PlatformVersion = TEXT("5.1");
    bool bEditor = true;
    FString PluginVersion;
    FString OS = TEXT("Windows");
    FString Local;
    FString PrevType = TEXT("zel");
    // Body size in bytes, seconds and animation length of the previous exchange;
    // the dispatcher fills them in just before sending.
    int32 PrevSize = 0;
    float Latency = 0.0f;
    int32 PrevAudioLength = 0;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelIORequestMeta>();

// A whole lipsync request as the server receives it.
struct CADRELBLENDSHAPE_API FCadrelZELRequest
{
    FCadrelIORequestData Data;
    FCadrelIORequestMeta Meta;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelZELRequest>();

// How the module sends a request; none of it goes into the request document.
struct CADRELBLENDSHAPE_API FCadrelZELRequestParam
{
    FGuid ID;
    int32 Index = -1;
    // Callers number their jobs before sending; -1 marks a request that belongs to none.
    int32 MainIndex = -1;
    FString Token;
    EBlendShapeType LinkServerType = EBlendShapeType::VIRETHIO;
    bool bStream = false;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelZELRequestParam>();

// One bone value of a frame, an Euler-angle triple in the server's units.
struct CADRELBLENDSHAPE_API FCadrelZELBones
{
    FString BoneName;
    FVector BoneValue = FVector::ZeroVector;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelZELBones>();

struct CADRELBLENDSHAPE_API FCadrelFaceFrames
{
    // One weight per entry of the response's BlendShapesNames, by position.
    TArray<double> Blendshapes;
    TArray<FCadrelZELBones> Bones;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelFaceFrames>();

// The common result of a lipsync exchange, whichever server made it.
struct CADRELBLENDSHAPE_API FCadrelZELResponse
{
    FString Version;
    FString Platform;
    int32 FPS = -1;
    TArray<FCadrelFaceFrames> Frames;
    TArray<FString> BlendShapesNames;
    TArray<FString> BonesNames;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelZELResponse>();

// One frame of an Audio2Face export: one weight per entry of FacsNames.
struct CADRELBLENDSHAPE_API FAudio2FaceBlendShapeWeightMat
{
    TArray<double> Weight;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FAudio2FaceBlendShapeWeightMat>();

// A blend-shape export of the local Audio2Face bridge. The counts are informative
// only and are never compared with the arrays.
struct CADRELBLENDSHAPE_API FCadrelAudio2FaceBlendShapeInfo
{
    int32 ExportFps = -1;
    FString TrackPath;
    int32 NumPoses = -1;
    int32 NumFrames = -1;
    TArray<FString> FacsNames;
    TArray<FAudio2FaceBlendShapeWeightMat> WeightMat;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelAudio2FaceBlendShapeInfo>();

// Where the live animation receiver of a stream listens.
struct CADRELBLENDSHAPE_API FCadrelVelkInfo
{
    FString VelkHost = TEXT("127.0.0.1");
    int32 VelkPort = -1;
    int32 AudioPort = -1;
    // The server's "TimeLength", a whole number that carries no unit of its own.
    float AudioTime = 0.0f;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelVelkInfo>();

// Fired with the element's MainIndex and Index when its time in the stream queue has run out.
using FVelkEndPlayDelegate = TDelegate<void(int32 MainIndex, int32 Index, const FString&)>;

// One chunk of a stream: its request, how to send it, its audio and the queue's timing state.
struct CADRELBLENDSHAPE_API FCadrelVelkStreamQueueElement
{
    FCadrelVelkStreamQueueElement() = default;
    FCadrelVelkStreamQueueElement(const FCadrelZELRequest& InZELInfo, const FCadrelZELRequestParam& InParam,
                                  const TArray<uint8>& InAudioData)
        : ZELInfo(InZELInfo), Param(InParam), AudioData(InAudioData)
    {
    }

    FCadrelZELRequest ZELInfo;
    FCadrelZELRequestParam Param;
    // One complete WAV file, header included.
    TArray<uint8> AudioData;
    // Seconds still to wait once the request has been sent.
    float CurrentDelayTime = 0.0f;
    bool bExecute = false;
    FVelkEndPlayDelegate EndPlayDelegate;

    static UScriptStruct* StaticStruct();
};
template <> CADRELBLENDSHAPE_API UScriptStruct* StaticStruct<FCadrelVelkStreamQueueElement>();

#include "VelkDatagramParser.h"

#include <cmath>
#include <cstring>
#include <string_view>

namespace
{
constexpr size_t MaxShapeNameBytes = 64;
constexpr int32_t MinSampleRate = 8000;
constexpr int32_t MaxSampleRate = 192000;
constexpr int32_t MaxBlobBytes = 1024;
// A day of audio at the highest rate; no stream runs longer, and the times stay exact in a double.
constexpr double MaxStreamSeconds = 86400.0;

// liblo reports reception errors here; the parser learns of them from the dispatch result instead.
void IgnoreLibloError(int, const char*, const char*) {}

// OSC aligns arguments to four bytes only, less than lo_arg's own alignment, so they are
// read by bytes rather than through lo_arg's members.
template <typename T> T ReadUnaligned(const lo_arg* Argument)
{
    T Value;
    std::memcpy(&Value, Argument, sizeof(T));
    return Value;
}

bool IsPrintableName(const char* Name)
{
    const size_t Length = std::strlen(Name);
    if (Length == 0 || Length > MaxShapeNameBytes)
    {
        return false;
    }
    for (size_t Index = 0; Index < Length; ++Index)
    {
        const unsigned char Byte = static_cast<unsigned char>(Name[Index]);
        if (Byte < 0x20 || Byte == 0x7f)
        {
            return false;
        }
    }
    return true;
}

bool ReadFrameHeader(lo_arg** Argv, FVelkMessage& Out)
{
    Out.Kind = EVelkMessageKind::FrameHeader;
    Out.Stream = ReadUnaligned<int32_t>(Argv[0]);
    Out.FrameNumber = ReadUnaligned<int32_t>(Argv[1]);
    Out.FrameTime = ReadUnaligned<double>(Argv[2]);
    return Out.FrameNumber >= 0 && std::isfinite(Out.FrameTime) && Out.FrameTime >= 0.0 &&
           Out.FrameTime <= MaxStreamSeconds;
}

bool ReadBlendValue(lo_arg** Argv, FVelkMessage& Out)
{
    Out.Kind = EVelkMessageKind::BlendValue;
    if (!IsPrintableName(reinterpret_cast<const char*>(Argv[0])) ||
        !std::isfinite(ReadUnaligned<float>(Argv[1])))
    {
        return false;
    }
    Out.Name = reinterpret_cast<const char*>(Argv[0]);
    // Senders round a weight of one a little over; the page draws weights in [0, 1].
    Out.Value = std::fmin(1.0f, std::fmax(0.0f, ReadUnaligned<float>(Argv[1])));
    return true;
}

bool ReadBonePose(lo_arg** Argv, FVelkMessage& Out)
{
    Out.Kind = EVelkMessageKind::BonePose;
    if (!IsPrintableName(reinterpret_cast<const char*>(Argv[0])))
    {
        return false;
    }
    Out.Name = reinterpret_cast<const char*>(Argv[0]);
    double Norm = 0.0;
    for (int Index = 1; Index < 8; ++Index)
    {
        if (!std::isfinite(ReadUnaligned<float>(Argv[Index])))
        {
            return false;
        }
    }
    for (int Index = 0; Index < 4; ++Index)
    {
        Out.Rotation[Index] = ReadUnaligned<float>(Argv[4 + Index]);
        Norm += double(Out.Rotation[Index]) * Out.Rotation[Index];
    }
    // A zero quaternion is no rotation at all; anything else is normalised as senders drift.
    Norm = std::sqrt(Norm);
    if (!(Norm > 1e-3 && Norm < 1e3))
    {
        return false;
    }
    for (float& Component : Out.Rotation)
    {
        Component = static_cast<float>(Component / Norm);
    }
    return true;
}

bool ReadAudio(lo_arg** Argv, FVelkMessage& Out)
{
    Out.Kind = EVelkMessageKind::Audio;
    Out.Stream = ReadUnaligned<int32_t>(Argv[0]);
    Out.FirstSample = ReadUnaligned<int64_t>(Argv[1]);
    Out.SampleRate = ReadUnaligned<int32_t>(Argv[2]);
    const lo_blob Blob = reinterpret_cast<lo_blob>(Argv[3]);
    const int32_t Bytes = static_cast<int32_t>(lo_blob_datasize(Blob));
    if (Out.SampleRate < MinSampleRate || Out.SampleRate > MaxSampleRate || Out.FirstSample < 0 ||
        double(Out.FirstSample) / Out.SampleRate > MaxStreamSeconds || Bytes <= 0 || Bytes > MaxBlobBytes ||
        Bytes % 2 != 0)
    {
        return false;
    }
    const unsigned char* Pcm = static_cast<const unsigned char*>(lo_blob_dataptr(Blob));
    Out.Samples.resize(static_cast<size_t>(Bytes / 2));
    for (size_t Index = 0; Index < Out.Samples.size(); ++Index)
    {
        // Little-endian on the wire, whatever this machine is.
        Out.Samples[Index] = static_cast<int16_t>(Pcm[2 * Index] | (Pcm[2 * Index + 1] << 8));
    }
    return true;
}

// Addresses of the live link; any other address is some other sender's business and is ignored.
struct FKnownAddress
{
    std::string_view Path;
    std::string_view Types;
    EVelkPortKind Port;
    bool (*Read)(lo_arg** Argv, FVelkMessage& Out);
};

bool ReadApply(lo_arg**, FVelkMessage& Out)
{
    Out.Kind = EVelkMessageKind::Apply;
    return true;
}

constexpr FKnownAddress KnownAddresses[] = {
    {"/Cadrel/Frame", "iid", EVelkPortKind::Velk, ReadFrameHeader},
    {"/VMC/Ext/Blend/Val", "sf", EVelkPortKind::Velk, ReadBlendValue},
    {"/VMC/Ext/Bone/Pos", "sfffffff", EVelkPortKind::Velk, ReadBonePose},
    {"/VMC/Ext/Blend/Apply", "", EVelkPortKind::Velk, ReadApply},
    {"/Cadrel/Audio", "ihib", EVelkPortKind::Audio, ReadAudio},
};
} // namespace

FVelkDatagramParser::FVelkDatagramParser(EVelkPortKind InPortKind, const std::string& Port)
    : PortKind(InPortKind)
{
    // liblo binds port "0" but then reports 0 as its port; no port at all makes it choose a free one.
    Server = lo_server_new_with_proto(Port == "0" ? nullptr : Port.c_str(), LO_UDP, IgnoreLibloError);
    if (Server == nullptr)
    {
        return;
    }
    // A bundle stamped for later would otherwise wait in liblo's queue, which a sender could grow
    // without bound; the stream's own clock places frames, so every bundle is taken as it comes.
    lo_server_enable_queue(Server, 0, 0);
    lo_server_add_method(Server, nullptr, nullptr, &FVelkDatagramParser::OnMessage, this);
}

FVelkDatagramParser::~FVelkDatagramParser()
{
    if (Server != nullptr)
    {
        lo_server_free(Server);
    }
}

int FVelkDatagramParser::SocketFd() const
{
    return lo_server_get_socket_fd(Server);
}

int FVelkDatagramParser::Port() const
{
    return lo_server_get_port(Server);
}

FVelkDatagram FVelkDatagramParser::Parse(const void* Data, size_t Size)
{
    Current = FVelkDatagram{};
    bBadMessage = false;
    bKnownMessage = false;
    const size_t Limit = PortKind == EVelkPortKind::Velk ? MaxVelkDatagramBytes : MaxAudioDatagramBytes;
    if (Size > Limit)
    {
        Current.Kind = EVelkDatagramKind::Oversized;
        return std::move(Current);
    }
    // liblo takes a mutable pointer but only reads; a copy keeps the caller's bytes untouched anyway.
    std::vector<unsigned char> Bytes(static_cast<const unsigned char*>(Data),
                                     static_cast<const unsigned char*>(Data) + Size);
    const int Used = Size == 0 ? -1 : lo_server_dispatch_data(Server, Bytes.data(), Bytes.size());
    if (Used < 0 || bBadMessage)
    {
        Current.Messages.clear();
        Current.Kind = EVelkDatagramKind::Malformed;
    }
    else
    {
        Current.Kind = bKnownMessage ? EVelkDatagramKind::Accepted : EVelkDatagramKind::Foreign;
    }
    return std::move(Current);
}

int FVelkDatagramParser::OnMessage(const char* Path, const char* Types, lo_arg** Argv, int Argc, lo_message,
                                   void* UserData)
{
    static_cast<FVelkDatagramParser*>(UserData)->Accept(Path, Types, Argv, Argc);
    return 0;
}

void FVelkDatagramParser::Accept(const char* Path, const char* Types, lo_arg** Argv, int Argc)
{
    for (const FKnownAddress& Known : KnownAddresses)
    {
        if (Known.Port != PortKind || Path == nullptr || Known.Path != Path)
        {
            continue;
        }
        bKnownMessage = true;
        FVelkMessage Message;
        const bool bTypesMatch =
            Types != nullptr && Known.Types == Types && static_cast<size_t>(Argc) == Known.Types.size();
        if (!bTypesMatch || !Known.Read(Argv, Message))
        {
            bBadMessage = true;
            return;
        }
        Current.Messages.push_back(std::move(Message));
        return;
    }
}

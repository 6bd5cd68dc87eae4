#include "VelkDatagramParser.h"
#include "VelkTestDatagrams.h"
#include "VmcPose.h"

#include <gtest/gtest.h>

#include <cmath>
#include <functional>

namespace
{
using FBytes = std::vector<unsigned char>;

FBytes Message(const char* Path, const std::function<void(lo_message)>& Fill)
{
    lo_message Built = lo_message_new();
    Fill(Built);
    return VelkTest::Serialise(Built, Path);
}

struct FDatagramCase
{
    const char* Name;
    EVelkPortKind Port;
    FBytes Bytes;
    EVelkDatagramKind Expected;
};

// Bytes that are no OSC at all (empty, text, cut short, lengths past the end) are the
// datagram fuzzer's, which checks that a refused datagram yields no message.
std::vector<FDatagramCase> DatagramCases()
{
    const FBytes Frame = VelkTest::FrameBundle(7, 3, 0.1, 0.5f);
    const float ZeroRotation[4] = {0, 0, 0, 0};
    return {
        {"frame bundle", EVelkPortKind::Velk, Frame, EVelkDatagramKind::Accepted},
        {"audio block", EVelkPortKind::Audio, VelkTest::Audio(7, 512, 16000, 1024),
         EVelkDatagramKind::Accepted},
        {"audio on the VMC port", EVelkPortKind::Velk, VelkTest::Audio(7, 0, 16000, 64),
         EVelkDatagramKind::Foreign},
        {"frame on the audio port", EVelkPortKind::Audio, Frame, EVelkDatagramKind::Oversized},
        {"shape on the audio port", EVelkPortKind::Audio,
         Message("/VMC/Ext/Blend/Val", [](lo_message M) { lo_message_add(M, "sf", "jawOpen", 0.5f); }),
         EVelkDatagramKind::Foreign},
        {"other VMC address", EVelkPortKind::Velk,
         Message("/VMC/Ext/Root/Pos", [](lo_message M) { lo_message_add(M, "sfff", "root", 0.f, 0.f, 0.f); }),
         EVelkDatagramKind::Foreign},
        {"header with a float frame time", EVelkPortKind::Velk,
         Message("/Cadrel/Frame", [](lo_message M) { lo_message_add(M, "iif", 1, 2, 0.5f); }),
         EVelkDatagramKind::Malformed},
        {"negative frame number", EVelkPortKind::Velk,
         Message("/Cadrel/Frame", [](lo_message M) { lo_message_add(M, "iid", 1, -2, 0.5); }),
         EVelkDatagramKind::Malformed},
        {"infinite frame time", EVelkPortKind::Velk,
         Message("/Cadrel/Frame", [](lo_message M) { lo_message_add(M, "iid", 1, 2, INFINITY); }),
         EVelkDatagramKind::Malformed},
        {"NaN weight", EVelkPortKind::Velk,
         Message("/VMC/Ext/Blend/Val", [](lo_message M) { lo_message_add(M, "sf", "jawOpen", NAN); }),
         EVelkDatagramKind::Malformed},
        {"empty shape name", EVelkPortKind::Velk,
         Message("/VMC/Ext/Blend/Val", [](lo_message M) { lo_message_add(M, "sf", "", 0.5f); }),
         EVelkDatagramKind::Malformed},
        {"control character in a name", EVelkPortKind::Velk,
         Message("/VMC/Ext/Blend/Val", [](lo_message M) { lo_message_add(M, "sf", "jaw\nOpen", 0.5f); }),
         EVelkDatagramKind::Malformed},
        {"zero head rotation", EVelkPortKind::Velk, VelkTest::FrameBundle(7, 3, 0.1, 0.5f, ZeroRotation),
         EVelkDatagramKind::Malformed},
        {"sample rate zero", EVelkPortKind::Audio, VelkTest::Audio(7, 0, 0, 64),
         EVelkDatagramKind::Malformed},
        {"negative first sample", EVelkPortKind::Audio, VelkTest::Audio(7, -1, 16000, 64),
         EVelkDatagramKind::Malformed},
        {"odd PCM bytes", EVelkPortKind::Audio, VelkTest::Audio(7, 0, 16000, 63),
         EVelkDatagramKind::Malformed},
        {"audio over 1,200 bytes", EVelkPortKind::Audio, VelkTest::Audio(7, 0, 16000, 1200),
         EVelkDatagramKind::Oversized},
        {"20 KB of zeros", EVelkPortKind::Velk, FBytes(20000, 0), EVelkDatagramKind::Oversized},
    };
}

TEST(VelkDatagramParserTest, SortsEveryDatagramByTheWireFormat)
{
    FVelkDatagramParser Velk(EVelkPortKind::Velk, "0");
    FVelkDatagramParser Audio(EVelkPortKind::Audio, "0");
    ASSERT_TRUE(Velk.Valid() && Audio.Valid());
    for (const FDatagramCase& Case : DatagramCases())
    {
        FVelkDatagramParser& Parser = Case.Port == EVelkPortKind::Velk ? Velk : Audio;
        const FVelkDatagram Parsed = Parser.Parse(Case.Bytes.data(), Case.Bytes.size());
        EXPECT_EQ(Parsed.Kind, Case.Expected) << Case.Name;
        if (Parsed.Kind != EVelkDatagramKind::Accepted)
        {
            EXPECT_TRUE(Parsed.Messages.empty()) << Case.Name;
        }
    }
}

TEST(VelkDatagramParserTest, KeepsAFramesMessagesInOrderAndTheAudioSamples)
{
    FVelkDatagramParser Velk(EVelkPortKind::Velk, "0");
    const FBytes Frame = VelkTest::FrameBundle(7, 3, 0.125, 1.5f);
    const FVelkDatagram Parsed = Velk.Parse(Frame.data(), Frame.size());
    ASSERT_EQ(Parsed.Messages.size(), 1u + 52u + 3u + 1u);
    EXPECT_EQ(Parsed.Messages.front().FrameTime, 0.125);
    EXPECT_EQ(Parsed.Messages[18].Name, "jawOpen");
    EXPECT_EQ(Parsed.Messages[18].Value, 1.0f) << "weights are clamped to [0, 1]";
    EXPECT_EQ(Parsed.Messages.back().Kind, EVelkMessageKind::Apply);

    FVelkDatagramParser AudioParser(EVelkPortKind::Audio, "0");
    const FBytes Audio = VelkTest::Audio(7, 512, 16000, 4);
    const FVelkDatagram Block = AudioParser.Parse(Audio.data(), Audio.size());
    ASSERT_EQ(Block.Messages.size(), 1u);
    EXPECT_EQ(Block.Messages[0].FirstSample, 512);
    EXPECT_EQ(Block.Messages[0].Samples, (std::vector<int16_t>{0x0101, 0x0101}));
}

TEST(VmcPoseTest, UndoesUnitysEulerOrder)
{
    // Unity's q = yaw * pitch * roll, with the angles below in degrees.
    const struct
    {
        double Pitch, Yaw, Roll;
    } Cases[] = {{0, 0, 0}, {20, 0, 0}, {0, -35, 0}, {0, 0, 15}, {10, 25, -12}};
    for (const auto& Case : Cases)
    {
        const double Half = 3.14159265358979323846 / 360.0;
        const double Cx = std::cos(Case.Pitch * Half), Sx = std::sin(Case.Pitch * Half);
        const double Cy = std::cos(Case.Yaw * Half), Sy = std::sin(Case.Yaw * Half);
        const double Cz = std::cos(Case.Roll * Half), Sz = std::sin(Case.Roll * Half);
        const float Rotation[4] = {
            static_cast<float>(Cy * Sx * Cz + Sy * Cx * Sz), static_cast<float>(Sy * Cx * Cz - Cy * Sx * Sz),
            static_cast<float>(Cy * Cx * Sz - Sy * Sx * Cz), static_cast<float>(Cy * Cx * Cz + Sy * Sx * Sz)};
        const FViewAngles Angles = VmcRotationToAngles(Rotation);
        EXPECT_NEAR(Angles.Pitch, Case.Pitch, 1e-3);
        EXPECT_NEAR(Angles.Yaw, Case.Yaw, 1e-3);
        EXPECT_NEAR(Angles.Roll, Case.Roll, 1e-3);
    }
}
} // namespace

#include "AnimationHtml.h"
#include "CadrelJson.h"
#include "MemorySoundFile.h"
#include "TextCount.h"

#include <gtest/gtest.h>

#include <openssl/evp.h>

#include <vector>

namespace
{
// The text of the script element with this id.
std::string ScriptText(const std::string& Html, const std::string& Id)
{
    const std::size_t Open = Html.find("id=\"" + Id + "\">");
    if (Open == std::string::npos)
    {
        return "(no script " + Id + ")";
    }
    const std::size_t Begin = Html.find('>', Open) + 1;
    return Html.substr(Begin, Html.find("</script>", Begin) - Begin);
}

FCadrelZELResponse Hostile()
{
    FCadrelZELResponse Made;
    Made.FPS = 30;
    Made.BlendShapesNames = {TEXT("jawOpen"), FString::FromUTF8("</script><script>alert(1)</script><!--"),
                             FString::FromUTF8("@AUDIO@ \xe2\x80\xa8")};
    for (int32 Index = 0; Index < 3; ++Index)
    {
        FCadrelFaceFrames Frame;
        Frame.Blendshapes = {0.1 * Index, 0.5, 1.0};
        Made.Frames.Add(Frame);
    }
    return Made;
}

TArray<uint8> Bytes(const std::string& Text)
{
    return TArray<uint8>(reinterpret_cast<const uint8*>(Text.data()), int32(Text.size()));
}
} // namespace

// Whatever the names and title hold, the page keeps its own four scripts, and the
// data reads back as the animation it came from.
TEST(AnimationHtml, EmbeddedDataCannotEndItsScript)
{
    const FCadrelZELResponse Animation = Hostile();
    const std::string Html = AnimationToHtml(Animation, {}, 0, "</title><script>x</script>&");

    EXPECT_EQ(CountOf(Html, "<script"), 4);
    EXPECT_EQ(CountOf(Html, "</script>"), 4);
    EXPECT_EQ(CountOf(Html, "<!--"), 0);
    EXPECT_NE(Html.find("<title>&lt;/title&gt;&lt;script&gt;x&lt;/script&gt;&amp; - cadrel</title>"),
              std::string::npos);
    EXPECT_EQ(ScriptText(Html, "cadrel-audio"), "");

    FCadrelZELResponse ReadBack;
    CadrelJson::StringToZELResponse(Bytes(ScriptText(Html, "cadrel-animation")), ReadBack);
    EXPECT_EQ(ReadBack.BlendShapesNames, Animation.BlendShapesNames);
    ASSERT_EQ(ReadBack.Frames.Num(), 3);
    EXPECT_EQ(ReadBack.Frames[2].Blendshapes, Animation.Frames[2].Blendshapes);
}

// The sound is a WAV the browser can decode: the same rate and length, clipped, not
// wrapped. Three lengths, so that the base64 text ends in each of its three ways.
TEST(AnimationHtml, EmbedsTheSoundAsWav)
{
    for (const int Samples : {22050, 22051, 22052})
    {
        std::vector<float> Mono(Samples, 0.5f);
        Mono[0] = 4.0f;
        // Samples that vary, so that a wrong character anywhere changes one.
        for (int Index = 2; Index < Samples; ++Index)
        {
            Mono[Index] = float(Index % 997) / 997.0f - 0.5f;
        }
        const std::string Base64 =
            ScriptText(AnimationToHtml(Hostile(), Mono, 22050, "speech"), "cadrel-audio");
        ASSERT_EQ(Base64.size() % 4, 0u);
        std::vector<uint8> Wav(Base64.size() / 4 * 3);
        const int Length = EVP_DecodeBlock(Wav.data(), reinterpret_cast<const unsigned char*>(Base64.data()),
                                           int(Base64.size()));
        ASSERT_GT(Length, 44);
        Wav.resize(std::size_t(Length) - CountOf(Base64, "="));

        FMemorySoundFile Sound;
        SF_INFO Info{};
        ASSERT_TRUE(Sound.OpenForReading(Wav, Info)) << Sound.GetError();
        EXPECT_EQ(Info.samplerate, 22050);
        EXPECT_EQ(Info.channels, 1);
        EXPECT_EQ(Info.frames, Samples);
        std::vector<float> Read(Samples);
        ASSERT_EQ(sf_readf_float(Sound.Get(), Read.data(), Samples), Samples);
        EXPECT_GT(Read[0], 0.99f);
        for (int Index = 1; Index < Samples; ++Index)
        {
            ASSERT_NEAR(Read[Index], Mono[Index], 1e-3f) << Index;
        }
    }
}

#include "BenchmarkRequests.h"

#include <cmath>
#include <cstdint>
#include <numbers>

namespace
{
constexpr const char* Document =
    R"({"data":{"id":"5A0E8C1F2B3D4E6F8091A2B3C4D5E6F7","type":"cadrel","attributes":{"zel":{"platform":"orvane",)"
    R"("rigVersion":"shapes_2.0","rigType":"vireth","engine":"latest","answerFormat":"json-anim",)"
    R"("explicitEmotion":"calm","eyeMovementParameters":{"eyeMovementMode":"mocap"},)"
    R"("neckMovementParameters":{"neckMovementMode":"mocap"}}}},"meta":{"platform":"orvane",)"
    R"("platform_version":"5.1","editor":true,"plugin_version":"1.5.7","OS":"Windows","local":"zh-CN",)"
    R"("prev_type":"zel","prev_size":"0","latency":"0.0","prev_audio_length":0}})";

void Append(std::string& Out, std::uint32_t Value, int Bytes)
{
    for (int Index = 0; Index < Bytes; ++Index)
    {
        Out += char((Value >> (8 * Index)) & 0xFF);
    }
}
} // namespace

std::string BenchmarkRequests::SpeechWav(double Seconds)
{
    constexpr int Rate = 16000;
    const auto Frames = std::uint32_t(Seconds * Rate);
    std::string Wav = "RIFF";
    Append(Wav, 36 + Frames * 2, 4);
    Wav += "WAVEfmt ";
    Append(Wav, 16, 4);
    Append(Wav, 1, 2);
    Append(Wav, 1, 2);
    Append(Wav, Rate, 4);
    Append(Wav, Rate * 2, 4);
    Append(Wav, 2, 2);
    Append(Wav, 16, 2);
    Wav += "data";
    Append(Wav, Frames * 2, 4);
    for (std::uint32_t Frame = 0; Frame < Frames; ++Frame)
    {
        const double Time = double(Frame) / Rate;
        const double Envelope = 0.5 - 0.5 * std::cos(2.0 * std::numbers::pi * 3.0 * Time);
        const double Value = 0.6 * Envelope * std::sin(2.0 * std::numbers::pi * 180.0 * Time);
        Append(Wav, std::uint32_t(std::int32_t(std::lround(Value * 32767.0))), 2);
    }
    return Wav;
}

httplib::Result BenchmarkRequests::Post(httplib::Client& Client, const char* Path, const std::string& Audio,
                                        int Index, int MainIndex)
{
    const httplib::Headers Headers{{"Accept-Encoding", "utf-8"},
                                   {"ZELGuid", "0123456789ABCDEF0123456789ABCDEF"},
                                   {"ZELIndex", std::to_string(Index)},
                                   {"ZELMainIndex", std::to_string(MainIndex)},
                                   {"RequestType", "VIRETHIO"},
                                   {"bStream", "1"},
                                   {"AudioSize", std::to_string(Audio.size())}};
    const std::string Body =
        std::string("\r\n--ZELBoundary\r\nContent-Disposition: form-data; name=\"json\"\r\n\r\n") + Document +
        "\r\n--ZELBoundary\r\nContent-Type: application/octet-stream\r\nContent-Disposition: form-data; "
        "name=\"audio\"; filename=\"audio.wav\"\r\n\r\n" +
        Audio + "\r\n--ZELBoundary--\r\n";
    return Client.Post(Path, Headers, Body, "multipart/form-data; boundary=ZELBoundary");
}

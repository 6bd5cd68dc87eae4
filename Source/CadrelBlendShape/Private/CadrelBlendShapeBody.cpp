#include "CadrelBlendShapeBody.h"

#include <algorithm>
#include <limits>
#include <string_view>

namespace
{
constexpr std::string_view JsonPartHead = "\r\n--ZELBoundary"
                                          "\r\nContent-Disposition: form-data; name=\"json\"\r\n\r\n";
constexpr std::string_view AudioPartHead =
    "\r\n--ZELBoundary"
    "\r\nContent-Type: application/octet-stream"
    "\r\nContent-Disposition: form-data; name=\"audio\"; filename=\"audio.wav\"\r\n\r\n";
constexpr std::string_view BodyTail = "\r\n--ZELBoundary--\r\n";

// GCC 12 at -O3 wrongly warns that the vector's growth path inside Append copies
// into a zero-sized block, a known false positive of its checks on std::vector.
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wstringop-overflow"
#endif
void AppendText(TArray<uint8>& Body, std::string_view Text)
{
    Body.Append(reinterpret_cast<const uint8*>(Text.data()), static_cast<int32>(Text.size()));
}
#if defined(__GNUC__) && !defined(__clang__)
#pragma GCC diagnostic pop
#endif
} // namespace

TArray<uint8> MakeZELRequestBody(const FString& Json, const TArray<uint8>& AudioData)
{
    const FTCHARToUTF8 JsonUtf8(Json);
    TArray<uint8> Body;
    const int64 Size = static_cast<int64>(JsonPartHead.size() + AudioPartHead.size() + BodyTail.size()) +
                       JsonUtf8.Length() + AudioData.Num();
    Body.Reserve(static_cast<int32>(std::min<int64>(Size, std::numeric_limits<int32>::max())));
    AppendText(Body, JsonPartHead);
    AppendText(Body, std::string_view(JsonUtf8.Get(), static_cast<SIZE_T>(JsonUtf8.Length())));
    AppendText(Body, AudioPartHead);
    Body.Append(AudioData);
    AppendText(Body, BodyTail);
    return Body;
}

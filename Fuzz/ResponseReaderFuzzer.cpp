#include "CadrelJson.h"

#include <cstring>
#include <string>

// The lipsync answer reader on hostile bytes, as an HTTP body and as host text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    FCadrelZELResponse FromBytes;
    CadrelJson::StringToZELResponse(TArray<uint8>(Data, static_cast<int32>(Size)), FromBytes);
    // Read twice into one record: the second read appends to the first.
    FCadrelZELResponse FromText;
    const FString Text = FString::FromUTF8(std::string_view(reinterpret_cast<const char*>(Data), Size));
    CadrelJson::StringToZELResponse(Text, FromText);
    CadrelJson::StringToZELResponse(Text, FromText);
    // The same bytes read as UTF-16 units reach lone surrogates in host text.
    std::u16string Units(Size / sizeof(char16_t), u'\0');
    std::memcpy(Units.data(), Data, Units.size() * sizeof(char16_t));
    CadrelJson::StringToZELResponse(FString(std::move(Units)), FromText);
    return 0;
}

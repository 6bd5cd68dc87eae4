#include "CadrelJson.h"

#include <string>

// The Velk info and token readers on hostile text.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    const FString Text = FString::FromUTF8(std::string_view(reinterpret_cast<const char*>(Data), Size));
    FCadrelVelkInfo Info;
    CadrelJson::StringToVelkInfo(Text, Info);
    FString Token;
    CadrelJson::StringToToken(Text, Token);
    return 0;
}

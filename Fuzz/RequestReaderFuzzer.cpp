#include "CadrelJson.h"

#include <string>

// The request reader on hostile text; whatever it read must write out again.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* Data, size_t Size)
{
    FCadrelZELRequest Request;
    CadrelJson::StringToZELRequest(
        FString::FromUTF8(std::string_view(reinterpret_cast<const char*>(Data), Size)), Request);
    FString Json;
    CadrelJson::ZELRequestToString(Request, Json);
    return 0;
}

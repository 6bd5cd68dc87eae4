#include "HttpModule.h"

#include "CurlHttpRequest.h"

FHttpModule& FHttpModule::Get()
{
    static FHttpModule Instance;
    return Instance;
}

TSharedRef<IHttpRequest> FHttpModule::CreateRequest()
{
    return MakeShared<FCurlHttpRequest>();
}

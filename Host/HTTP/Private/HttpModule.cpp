#include "HttpModule.h"

#include "CurlHttpRequest.h"
#include "HttpLog.h"

ORV_DEFINE_LOG_CATEGORY(LogHttp);

FHttpModule& FHttpModule::Get()
{
    static FHttpModule Instance;
    return Instance;
}

TSharedRef<IHttpRequest> FHttpModule::CreateRequest()
{
    TSharedRef<IHttpRequest> Request = MakeShared<FCurlHttpRequest>();
    RequestCreatedDelegate.ExecuteIfBound(Request);
    return Request;
}

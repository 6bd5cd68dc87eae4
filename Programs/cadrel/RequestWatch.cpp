#include "RequestWatch.h"

#include "HostLogCapture.h"
#include "HttpModule.h"

TSharedPtr<IHttpRequest> CatchRequest(const std::function<void()>& Call)
{
    TSharedPtr<IHttpRequest> Caught;
    FHttpRequestCreatedDelegate& Created = FHttpModule::Get().OnRequestCreated();
    Created.BindLambda([&Caught](const TSharedRef<IHttpRequest>& Request)
                       { Caught = Request.ToSharedPtr(); });
    Call();
    Created.Unbind();
    return Caught;
}

bool IsFailedRequest(const TSharedPtr<IHttpRequest>& Request)
{
    return !Request.IsValid() || Request->GetStatus() == EHttpRequestStatus::Failed;
}

std::string DescribeNoAnswer(const IHttpRequest& Request, const FHostLogCapture& Log)
{
    const FString Reason = Log.GetRequestFailure(Request.GetURL());
    return "no answer from " + Request.GetURL().ToUTF8() + ": " +
           (Reason.IsEmpty() ? std::string("the request ended without one") : Reason.ToUTF8());
}

std::string DescribeTimeout(const IHttpRequest& Request, double TimeoutSeconds)
{
    return "no answer from " + Request.GetURL().ToUTF8() + " within " +
           FString::SanitizeFloat(TimeoutSeconds, 0).ToUTF8() + " s";
}

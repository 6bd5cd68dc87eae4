#pragma once

#include "CoreMinimal.h"
#include "Interfaces/IHttpRequest.h"

#include <functional>
#include <string>

class FHostLogCapture;

// Runs Call and returns the last host request it created, or null. A module's
// request that ends without any response fires none of the module's delegates;
// the host request's own status is then the only way to learn that it has ended.
TSharedPtr<IHttpRequest> CatchRequest(const std::function<void()>& Call);

// Whether a caught request has ended without success; null counts as ended.
bool IsFailedRequest(const TSharedPtr<IHttpRequest>& Request);

// "no answer from URL: reason", in the HTTP module's words when it gave a reason.
std::string DescribeNoAnswer(const IHttpRequest& Request, const FHostLogCapture& Log);
std::string DescribeTimeout(const IHttpRequest& Request, double TimeoutSeconds);

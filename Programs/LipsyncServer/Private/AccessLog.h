#pragma once

#include <httplib.h>

// One line per request on standard error: method, path, status, body bytes of the
// answer and milliseconds from the end of the request's headers to the answer.
namespace AccessLog
{
// Called when a request's headers are in; a worker thread serves one request at a
// time, so the start is kept per thread.
void MarkStart();
void Write(const httplib::Request& Request, const httplib::Response& Response);
} // namespace AccessLog

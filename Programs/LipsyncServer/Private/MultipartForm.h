#pragma once

#include "RequestError.h"

#include <httplib.h>

#include <cstddef>
#include <string>
#include <vector>

struct FFormPart
{
    std::string Name;
    std::string FileName;
    std::string ContentType;
    std::string Content;
};

using FForm = std::vector<FFormPart>;

// Reads a multipart/form-data body through cpp-httplib's multipart reader as it
// arrives. More than MaxBody bytes of content is a 413, whether the client
// announced the length or sent chunks (the rest of a chunked body is read and
// dropped up to 1 MiB past the limit, so the client lives to read the 413); a body
// that is not a well-formed form is a 400.
TOrError<FForm> ReadForm(const httplib::Request& Request, httplib::Response& Response,
                         const httplib::ContentReader& Reader, std::size_t MaxBody);

// Reads and drops the body, so a refused request leaves the connection ready for
// the next one.
void DiscardBody(const httplib::Request& Request, const httplib::ContentReader& Reader, std::size_t MaxBody);

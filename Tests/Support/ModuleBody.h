#pragma once

#include <string>

// The multipart body exactly as the module builds it: a line break before the
// first boundary, no Content-Type on the json part, Content-Type before
// Content-Disposition on the audio part.
inline std::string ModuleBody(const std::string& Json, const std::string& Audio)
{
    return "\r\n--ZELBoundary\r\nContent-Disposition: form-data; name=\"json\"\r\n\r\n" + Json +
           "\r\n--ZELBoundary\r\nContent-Type: application/octet-stream\r\nContent-Disposition: form-data; "
           "name=\"audio\"; filename=\"audio.wav\"\r\n\r\n" +
           Audio + "\r\n--ZELBoundary--\r\n";
}

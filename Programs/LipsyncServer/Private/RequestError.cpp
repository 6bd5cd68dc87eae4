#include "RequestError.h"

#include "JsonText.h"

std::string ErrorToJson(const FRequestError& Error)
{
    std::string Json;
    Json.reserve(64 + Error.Field.size() + Error.Message.size());
    Json += "{\"error\":{\"status\":";
    AppendInteger(Json, Error.Status);
    Json += ",\"field\":";
    AppendJsonString(Json, Error.Field);
    Json += ",\"message\":";
    AppendJsonString(Json, Error.Message);
    Json += "}}";
    return Json;
}

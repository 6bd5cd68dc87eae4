#pragma once

#include <string>
#include <utility>
#include <variant>

// Why a request is refused: the HTTP status, the request field at fault (a header
// name, a form part or a path into the request document) and a sentence for people.
struct FRequestError
{
    int Status = 400;
    std::string Field;
    std::string Message;
};

// A value or the refusal that stopped it.
template <typename T> using TOrError = std::variant<T, FRequestError>;

inline FRequestError MakeError(int Status, std::string Field, std::string Message)
{
    return FRequestError{Status, std::move(Field), std::move(Message)};
}

// {"error":{"status":400,"field":"ZELGuid","message":"..."}}
std::string ErrorToJson(const FRequestError& Error);

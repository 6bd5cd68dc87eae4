#include "MultipartForm.h"

namespace
{
constexpr int PayloadTooLarge = 413;
// A client still writing when the server closes gets a reset, which loses the 413
// it was sent; reading on past the limit lets any ordinary client finish writing.
constexpr std::size_t DrainAllowance = std::size_t{1} << 20;

FRequestError TooLarge(std::size_t MaxBody)
{
    return MakeError(PayloadTooLarge, "body",
                     "the body is larger than " + std::to_string(MaxBody) + " bytes");
}
} // namespace

TOrError<FForm> ReadForm(const httplib::Request& Request, httplib::Response& Response,
                         const httplib::ContentReader& Reader, std::size_t MaxBody)
{
    // cpp-httplib's reader has no plain-body receiver in multipart mode, so a
    // request of another type must not reach it.
    if (!Request.is_multipart_form_data())
    {
        return MakeError(400, "Content-Type", "the body must be multipart/form-data");
    }
    FForm Form;
    std::size_t Received = 0;
    bool bTooLarge = false;
    const bool bRead = Reader(
        [&](const httplib::MultipartFormData& Header)
        {
            Form.push_back(FFormPart{Header.name, Header.filename, Header.content_type, {}});
            return true;
        },
        [&](const char* Data, std::size_t Size)
        {
            Received += Size;
            if (Received > MaxBody)
            {
                bTooLarge = true;
                return Received - MaxBody <= DrainAllowance;
            }
            if (Form.empty())
            {
                return false;
            }
            Form.back().Content.append(Data, Size);
            return true;
        });
    if (bTooLarge || Response.status == PayloadTooLarge)
    {
        return TooLarge(MaxBody);
    }
    if (!bRead)
    {
        return MakeError(400, "body", "the multipart body is malformed or incomplete");
    }
    return Form;
}

void DiscardBody(const httplib::Request& Request, const httplib::ContentReader& Reader, std::size_t MaxBody)
{
    std::size_t Received = 0;
    const auto Count = [&](const char*, std::size_t Size)
    {
        Received += Size;
        return Received <= MaxBody;
    };
    if (Request.is_multipart_form_data())
    {
        Reader([](const httplib::MultipartFormData&) { return true; }, Count);
    }
    else
    {
        Reader(Count);
    }
}

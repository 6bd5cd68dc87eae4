#include "ViewPageServer.h"

#include <gtest/gtest.h>

namespace
{
// Reads the event stream until Wanted appears in it, as the page's EventSource does.
std::string ReadEventsUntil(const std::string& Url, const std::string& Wanted)
{
    httplib::Client Client(Url);
    Client.set_read_timeout(5, 0);
    std::string Body;
    Client.Get("/events",
               [&](const char* Data, size_t Size)
               {
                   Body.append(Data, Size);
                   return Body.find(Wanted) == std::string::npos;
               });
    return Body;
}

TEST(ViewPageServerTest, ServesThePageAndReplaysTheLiveStreamToEveryNewPage)
{
    FLiveStreamBuffer Buffer;
    FViewPageServer Server(Buffer);
    std::string Error;
    ASSERT_TRUE(Server.Start("127.0.0.1", 0, Error)) << Error;
    const std::string Url = Server.Url().substr(0, Server.Url().size() - 1);

    httplib::Client Client(Url);
    for (const char* Path : {"/", "/view.js", "/face.js"})
    {
        const auto Response = Client.Get(Path);
        ASSERT_TRUE(Response) << Path;
        EXPECT_EQ(Response->status, 200) << Path;
        EXPECT_FALSE(Response->body.empty()) << Path;
    }
    EXPECT_EQ(Client.Get("/nothing")->status, 404);

    FViewFrame Frame;
    Frame.Stream = 4;
    Frame.Weights = {{"jawOpen", 0.5f}};
    Buffer.AddFrame(Frame);
    // A reload is a new event stream: it must get the stream's frames from the start again.
    for (int Load = 0; Load < 2; ++Load)
    {
        const std::string Events = ReadEventsUntil(Url, "\"type\":\"counts\"");
        EXPECT_NE(Events.find("data: {\"type\":\"frame\",\"stream\":4,\"frame\":0,"), std::string::npos)
            << Events;
        EXPECT_NE(Events.find("\"jawOpen\":0.5"), std::string::npos) << Events;
    }
    Server.Stop();
}
} // namespace

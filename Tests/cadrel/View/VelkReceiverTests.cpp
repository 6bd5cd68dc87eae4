#include "VelkReceiver.h"
#include "VelkTestDatagrams.h"

#include <gtest/gtest.h>

#include <arpa/inet.h>
#include <chrono>
#include <netinet/in.h>
#include <random>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>

namespace
{
using namespace std::chrono_literals;

// Raw bytes to a port of 127.0.0.1: what a hostile sender does, which no OSC library would.
class FRawSender
{
public:
    FRawSender() : Fd(socket(AF_INET, SOCK_DGRAM, 0)) {}
    ~FRawSender() { close(Fd); }
    void Send(int Port, const std::vector<unsigned char>& Bytes) const
    {
        sockaddr_in To{};
        To.sin_family = AF_INET;
        To.sin_port = htons(static_cast<uint16_t>(Port));
        To.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
        sendto(Fd, Bytes.data(), Bytes.size(), 0, reinterpret_cast<const sockaddr*>(&To), sizeof(To));
    }

private:
    int Fd;
};

template <typename FPredicate> bool WaitFor(FPredicate Done)
{
    const auto Deadline = std::chrono::steady_clock::now() + 10s;
    while (!Done() && std::chrono::steady_clock::now() < Deadline)
    {
        std::this_thread::sleep_for(1ms);
    }
    return Done();
}

class FVelkReceiverTest : public testing::Test
{
protected:
    void SetUp() override
    {
        std::string Error;
        ASSERT_TRUE(Receiver.Start(0, 0, true, Error)) << Error;
        Velk = lo_address_new("127.0.0.1", std::to_string(Receiver.VelkPort()).c_str());
        Audio = lo_address_new("127.0.0.1", std::to_string(Receiver.AudioPort()).c_str());
    }
    void TearDown() override
    {
        lo_address_free(Velk);
        lo_address_free(Audio);
    }

    // A frame as the server's link sends it: one bundle through liblo.
    void SendFrame(int32_t Stream, int32_t Number, float JawOpen)
    {
        lo_bundle Bundle = VelkTest::NewFrameBundle(Stream, Number, Number / 60.0, JawOpen);
        EXPECT_GT(lo_send_bundle(Velk, Bundle), 0);
        lo_bundle_free_recursive(Bundle);
    }

    std::vector<std::string> Events()
    {
        uint64_t Cursor = 0;
        return Buffer.Follow(Cursor, 0ms);
    }

    FLiveStreamBuffer Buffer;
    FVelkReceiver Receiver{Buffer};
    lo_address Velk = nullptr;
    lo_address Audio = nullptr;
};

TEST_F(FVelkReceiverTest, TurnsBundlesAndAudioIntoEventsForThePage)
{
    SendFrame(5, 0, 0.25f);
    SendFrame(5, 1, 0.75f);
    std::vector<unsigned char> Pcm(8, 0);
    lo_blob Blob = lo_blob_new(static_cast<int32_t>(Pcm.size()), Pcm.data());
    EXPECT_GT(lo_send(Audio, "/Cadrel/Audio", "ihib", 5, int64_t{0}, 16000, Blob), 0);
    lo_blob_free(Blob);

    ASSERT_TRUE(WaitFor([&] { return Buffer.Counts().Frames == 2 && Buffer.Counts().AudioBlocks == 1; }));
    const std::vector<std::string> Sent = Events();
    ASSERT_EQ(Sent.size(), 3u);
    EXPECT_NE(Sent[1].find("\"frame\":1,"), std::string::npos) << Sent[1];
    EXPECT_NE(Sent[1].find("\"jawOpen\":0.75"), std::string::npos) << Sent[1];
    EXPECT_NE(Sent[2].find("\"pcm\":[0,0,0,0]"), std::string::npos) << Sent[2];
    EXPECT_EQ(Buffer.Counts().Stream, 5);
}

TEST_F(FVelkReceiverTest, CountsAFloodOfMalformedDatagramsAndKeepsServing)
{
    FRawSender Raw;
    std::mt19937 Random(1234);
    constexpr int Flood = 10000;
    for (int Index = 0; Index < Flood; ++Index)
    {
        std::vector<unsigned char> Junk(1 + Random() % 200);
        for (unsigned char& Byte : Junk)
        {
            Byte = static_cast<unsigned char>(Random());
        }
        // Half of them look like OSC, so that liblo itself has something to reject.
        if (Index % 2 == 0 && Junk.size() >= 8)
        {
            std::copy_n("#bundle", 8, Junk.begin());
        }
        Raw.Send(Index % 2 == 0 ? Receiver.VelkPort() : Receiver.AudioPort(), Junk);
        // Paced so that the kernel's socket buffer never drops one and every datagram is counted.
        if (Index % 100 == 99)
        {
            ASSERT_TRUE(WaitFor(
                [&]
                {
                    const FViewCounts Counts = Buffer.Counts();
                    return Counts.Malformed + Counts.Foreign + Counts.Oversized == uint64_t(Index + 1);
                }));
        }
    }
    SendFrame(9, 0, 0.5f);
    ASSERT_TRUE(WaitFor([&] { return Buffer.Counts().Frames == 1; }));
    const FViewCounts Counts = Buffer.Counts();
    EXPECT_EQ(Counts.Malformed + Counts.Foreign, uint64_t(Flood));
    EXPECT_GT(Counts.Malformed, uint64_t(Flood / 2));
}

TEST(LiveStreamBufferTest, KeepsTheCurrentStreamBoundedAndCountsGaps)
{
    FLiveStreamBuffer Buffer;
    FViewFrame Frame;
    Frame.Stream = 1;
    for (const int32_t Number : {0, 1, 4, 2})
    {
        Frame.Number = Number;
        Buffer.AddFrame(Frame);
    }
    EXPECT_EQ(Buffer.Counts().MissingFrames, 2u);
    EXPECT_EQ(Buffer.Counts().OutOfOrderFrames, 1u);

    uint64_t Follower = 0;
    EXPECT_EQ(Buffer.Follow(Follower, 0ms).size(), 4u);
    Buffer.CountDatagram(EVelkDatagramKind::Malformed);
    Frame.Stream = 2;
    for (Frame.Number = 0; Frame.Number < int32_t(FLiveStreamBuffer::MaxEvents) + 10; ++Frame.Number)
    {
        Buffer.AddFrame(Frame);
    }
    const FViewCounts Counts = Buffer.Counts();
    EXPECT_EQ(Counts.Stream, 2);
    EXPECT_EQ(Counts.MissingFrames, 0u);
    EXPECT_EQ(Counts.Malformed, 1u) << "datagram counts outlive a stream";
    const std::vector<std::string> Kept = Buffer.Follow(Follower, 0ms);
    ASSERT_EQ(Kept.size(), FLiveStreamBuffer::MaxEvents)
        << "a follower that fell behind goes on from the oldest";
    EXPECT_NE(Kept.front().find("\"frame\":10,"), std::string::npos) << Kept.front();
}
} // namespace

#pragma once

#include "LipsyncServer.h"
#include "ServerTestSupport.h"

#include <gtest/gtest.h>
#include <httplib.h>

#include <memory>

// An in-process server on a free port and a kept-alive client to it.
class FServerFixture : public ::testing::Test
{
protected:
    void StartServer(FLipsyncServerOptions Options = {})
    {
        Options.Port = 0;
        Options.bQuiet = true;
        Server = std::make_unique<FLipsyncServer>(Options);
        std::string Error;
        ASSERT_TRUE(Server->Start(Error)) << Error;
        Client = std::make_unique<httplib::Client>(Server->BaseUrl());
        Client->set_read_timeout(30, 0);
    }

    void SetUp() override { StartServer(); }

    // A module request for Audio against Path.
    httplib::Result Send(const std::string& Path, const std::string& Audio,
                         const FCadrelZELRequest& Request = FCadrelZELRequest(), int Index = -1,
                         int MainIndex = 0)
    {
        return Client->Post(Path.c_str(), ModuleHeaders(Audio.size(), Index, MainIndex),
                            ModuleBody(RequestDocument(Request), Audio), ModuleContentType);
    }

    std::unique_ptr<FLipsyncServer> Server;
    std::unique_ptr<httplib::Client> Client;
};

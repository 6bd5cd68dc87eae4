#pragma once

#include <httplib.h>

#include <mutex>
#include <set>
#include <string>
#include <utility>

// Tells the server's idle kept-alive connections from those carrying a request, so
// that a stopping server can close the idle ones at once. cpp-httplib keeps waiting
// for an idle connection's next request until its keep-alive time-out runs out, and
// its stop waits for every connection thread.
class FIdleConnections
{
public:
    // A request's headers are in; its connection is busy until its answer is written.
    void MarkBusy(const httplib::Request& Request);
    void MarkDone(const httplib::Request& Request);

    // Shuts the reading side of every connection accepted on Port that carries no
    // request and has no bytes waiting: the thread waiting on it for a next request
    // wakes, reads the end and closes it. Answers in progress are still written.
    void ShutIdle(int Port);

private:
    using FPeer = std::pair<std::string, int>;

    std::mutex Mutex;
    std::multiset<FPeer> Busy;
};

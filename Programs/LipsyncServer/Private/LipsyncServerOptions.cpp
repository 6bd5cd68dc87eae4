#include "LipsyncServerCommand.h"

// Apart from running the server, so that a program can take the server's flags
// without linking the server itself.
void AddLipsyncServerOptions(CLI::App& Command, FLipsyncServerOptions& Options)
{
    Command.add_option("--port", Options.Port, "Port to listen on; 0 picks a free one")
        ->check(CLI::Range(0, 65535))
        ->capture_default_str();
    Command.add_option("--bind", Options.Bind, "Address to listen on")->capture_default_str();
    Command.add_option("--token", Options.Token,
                       "Access token every lipsync request must carry in Authorization");
    Command.add_option("--threads", Options.Threads, "Worker threads (connections served at once)")
        ->check(CLI::Range(1, 4096))
        ->capture_default_str();
    Command.add_option("--fps", Options.Fps, "Animation frames per second")
        ->check(CLI::Range(1, 240))
        ->capture_default_str();
    Command.add_option("--max-body", Options.MaxBody, "Largest request body in bytes")
        ->check(CLI::PositiveNumber)
        ->capture_default_str();
    Command.add_flag("--quiet", Options.bQuiet, "No access log on standard error");
    Command
        .add_option("--velk-host", Options.VelkHost, "Live receiver (VMC over OSC) that stream chunks drive")
        ->capture_default_str();
    Command.add_option("--velk-port", Options.VelkPort, "UDP port of the live receiver's VMC frames")
        ->check(CLI::Range(1, 65535))
        ->capture_default_str();
    Command.add_option("--audio-port", Options.AudioPort, "UDP port of the live receiver's audio")
        ->check(CLI::Range(1, 65535))
        ->capture_default_str();
    Command.add_flag_callback(
        "--no-velk", [&Options] { Options.bVelk = false; }, "Send nothing to the live receiver");
}

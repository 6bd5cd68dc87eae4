#pragma once

#include <string>
#include <string_view>

// Writes Bytes to Path so that Path holds either its old content or all of the new:
// the bytes go to a hidden temporary beside Path, which is flushed to disk and
// renamed over it. A new file gets the mode any created file gets (0666 less the
// umask); a file that is replaced keeps its permission bits. On failure the
// temporary is gone, Path is untouched and OutError is one line naming Path and
// the system's reason.
bool WriteFileAtomically(const std::string& Path, std::string_view Bytes, std::string& OutError);

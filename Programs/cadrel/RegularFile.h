#pragma once

#include "CoreMinimal.h"

#include <string>

// Reads a whole regular file of at most MaxBytes bytes (never more than a TArray
// can index). Directories, pipes and devices are refused rather than read, so a
// wrong path cannot make the program wait on a FIFO or swallow a device. False with
// a short reason in OutError, without the path: the caller names the file.
bool ReadRegularFile(const std::string& Path, int64 MaxBytes, TArray<uint8>& OutBytes, std::string& OutError);

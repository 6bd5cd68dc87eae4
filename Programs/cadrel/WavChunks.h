#pragma once

#include "WavFile.h"

#include <vector>

// Cuts a WAV file into pieces of ChunkMs milliseconds (the last one shorter) for a
// stream. Each piece is a complete WAV file with the canonical 44-byte header,
// 16-bit PCM at the source's rate and channels: the stream queue reads the byte
// rate and the data length at fixed offsets of that header to time each piece.
// Empty when ChunkMs is not positive or the source cannot be decoded.
std::vector<TArray<uint8>> CutWavIntoChunks(const FWavFile& Wav, int ChunkMs);

#pragma once

#include "TestSpeech.h"

#include <string>
#include <vector>

namespace EngineBench
{

// Sentences to tune on; the engine is never tuned on the held-out ones.
const std::vector<std::string>& TuningSentences();
const std::vector<std::string>& HeldOutSentences();

// Male and female variants, speeds and pitches; the held-out voices include
// espeak-ng's Klatt synthesiser, a different source model from its default one.
const std::vector<FVoice>& TuningVoices();
const std::vector<FVoice>& HeldOutVoices();

} // namespace EngineBench

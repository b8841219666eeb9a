// The words of the property "Audio Quality".
#pragma once

#include <string>

namespace companion {

// The program shows a sample size where the word "Lossless" stands, and ranks by
// how the text begins.

// `bits` of a sample, `sampleRate` in Hz.
std::u16string LosslessQuality(int bits, int sampleRate);

// By the bits per second that a pair of channels has. `weight` is how many bits
// of an MP3 one bit of the coding is worth. Empty without a bit rate.
std::u16string LossyQuality(double bitsPerSecond, int channels, double weight);

}  // namespace companion

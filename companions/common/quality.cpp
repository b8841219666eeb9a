#include "companions/common/quality.h"

#include <algorithm>

namespace companion {

std::u16string LosslessQuality(int bits, int sampleRate) {
    if (bits >= 24 || sampleRate > 48000) return u"DVD Quality (Lossless)";
    if (bits < 16 || sampleRate < 44100) return u"Low (Lossless)";
    return sampleRate == 48000 ? u"DAT Quality (Lossless)" : u"CD Quality (Lossless)";
}

std::u16string LossyQuality(double bitsPerSecond, int channels, double weight) {
    const double kbpsPerPair = bitsPerSecond / 1000 * 2 / std::max(1, channels) * weight;
    if (kbpsPerPair <= 0) return {};
    if (kbpsPerPair < 96) return u"Low";
    if (kbpsPerPair < 160) return u"Medium";
    return kbpsPerPair < 256 ? u"High" : u"Very High";
}

}  // namespace companion

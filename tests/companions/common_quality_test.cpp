#include "companions/common/quality.h"

#include <gtest/gtest.h>

namespace companion {
namespace {

TEST(Quality, OfLosslessAudioFollowsBitsAndRate) {
    struct Case {
        int bits;
        int sampleRate;
        std::u16string_view words;
    };
    const Case cases[] = {
        {16, 44099, u"Low (Lossless)"},        {16, 44100, u"CD Quality (Lossless)"},
        {23, 47999, u"CD Quality (Lossless)"}, {16, 48000, u"DAT Quality (Lossless)"},
        {15, 48000, u"Low (Lossless)"},        {24, 8000, u"DVD Quality (Lossless)"},
        {8, 48001, u"DVD Quality (Lossless)"}, {8, 8000, u"Low (Lossless)"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(LosslessQuality(row.bits, row.sampleRate), row.words)
            << row.bits << " at " << row.sampleRate;
}

TEST(Quality, OfOtherAudioFollowsTheBitsOfAPairOfChannels) {
    struct Case {
        double bitsPerSecond;
        int channels;
        double weight;
        std::u16string_view words;
    };
    const Case cases[] = {
        {0, 2, 1, u""},
        {-1, 2, 1, u""},
        {95999, 2, 1, u"Low"},
        {96000, 2, 1, u"Medium"},
        {159999, 2, 1, u"Medium"},
        {160000, 2, 1, u"High"},
        {255999, 2, 1, u"High"},
        {256000, 2, 1, u"Very High"},
        {64000, 1, 1, u"Medium"},
        {128000, 4, 1, u"Low"},
        {64000, 2, 1.5, u"Medium"},
        {48000, 0, 1, u"Medium"},
    };
    for (const Case& row : cases)
        EXPECT_EQ(LossyQuality(row.bitsPerSecond, row.channels, row.weight), row.words)
            << row.bitsPerSecond << " of " << row.channels;
}

}  // namespace
}  // namespace companion

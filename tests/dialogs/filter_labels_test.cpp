#include "dialogs/filter_labels.h"

#include <gtest/gtest.h>

#include "tests/support/text.h"

namespace {

TEST(FilterLabels, AreInTheOrderOfTheirTextAndLeadBackToTheirTypes) {
    clAudioTypes types;
    types.Add(L".wav", L"Wave", false);
    types.Add(L".flac", L"free Lossless Codec", true);
    types.Add(L".mp3", L"Layer III", false);
    clStringList labels;
    FilterLabels(types, labels);
    ASSERT_EQ(labels.Count(), 3);
    EXPECT_EQ(Utf8(*labels.At(0)), "free Lossless Codec   (.flac)");
    EXPECT_EQ(labels.At(0)->tag, 1);
    EXPECT_EQ(Utf8(*labels.At(1)), "Layer III   (.mp3)");
    EXPECT_EQ(labels.At(1)->tag, 2);
    EXPECT_EQ(Utf8(*labels.At(2)), "Wave   (.wav)");
    EXPECT_EQ(labels.At(2)->tag, 0);
}

TEST(FilterLabels, TwoTypesOfOneNameKeepARowEach) {
    clAudioTypes types;
    types.Add(L".wav", L"Wave", false);
    types.Add(L".wav", L"Wave", false);
    clStringList labels;
    FilterLabels(types, labels);
    ASSERT_EQ(labels.Count(), 2);
    EXPECT_EQ(labels.At(0)->tag + labels.At(1)->tag, 1);
}

}  // namespace

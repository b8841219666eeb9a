#include "mainwindow/row_pictures.h"

#include <gtest/gtest.h>

namespace {

constexpr COLORREF white = 0xFFFFFF;
constexpr COLORREF grey = 0x808080;
constexpr COLORREF red = 0x0000FF;

using Kind = clRowPictures::Kind;

class RowPictures : public testing::Test {
protected:
    // At x 3; draws a red corner.
    void Paint(const clRowPictures::Key& key) {
        pictures.Paint(row.Context(), 3, key, {4, 4}, [this](HDC context) {
            ++drawn;
            SetPixel(context, 0, 0, red);
        });
    }
    COLORREF At(int x, int y) const { return GetPixel(row.Context(), x, y); }
    void SetUp() override {
        row.CreateEmpty(nullptr, 20, 6);
        row.FillColour(grey);
    }

    clRowPictures pictures;
    XMemBitmap row;
    int drawn = 0;
};

TEST_F(RowPictures, StandOnTheirBackgroundAtTheirPlace) {
    Paint({Kind::FileType, 1, white});
    EXPECT_EQ(At(2, 0), grey);
    EXPECT_EQ(At(3, 0), red);
    EXPECT_EQ(At(4, 0), white);
    EXPECT_EQ(At(6, 3), white);
    EXPECT_EQ(At(7, 0), grey);
    EXPECT_EQ(At(3, 4), grey);
}

TEST_F(RowPictures, AreDrawnOnceForEachKindNumberAndBackground) {
    for (int i = 0; i < 3; ++i)
        Paint({Kind::FileType, 1, white});
    EXPECT_EQ(drawn, 1);
    Paint({Kind::FileType, 1, grey});
    EXPECT_EQ(drawn, 2);
    Paint({Kind::FileType, 2, white});
    EXPECT_EQ(drawn, 3);
    Paint({Kind::TickBox, 1, white});
    EXPECT_EQ(drawn, 4);
    row.FillColour(grey);
    Paint({Kind::FileType, 1, white});
    EXPECT_EQ(drawn, 4);
    EXPECT_EQ(At(3, 0), red);
}

TEST_F(RowPictures, AreDrawnAnewOnceTheyWereForgotten) {
    Paint({Kind::FileType, 1, white});
    pictures.Clear();
    Paint({Kind::FileType, 1, white});
    EXPECT_EQ(drawn, 2);
}

}  // namespace

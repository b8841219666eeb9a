// How a row of a list of files looks: colours and places, in pixels.
#pragma once

#include <cstdint>

// COLORREF values, blue in the high byte.
namespace row_colour {

inline constexpr std::uint32_t selected = 0xF6F1E3;
inline constexpr std::uint32_t background = 0xFFFFFF;
inline constexpr std::uint32_t tickedText = 0x000000;
inline constexpr std::uint32_t untickedText = 0x808080;
inline constexpr std::uint32_t notRated = 0xA0A0A0;

}  // namespace row_colour

// Column 0 begins with the tick box and the picture of the file; the places count
// from the column's left edge.
namespace row_place {

inline constexpr std::int32_t tickBox = 2;
inline constexpr std::int32_t picture = 20;
inline constexpr std::int32_t textTop = 2;
inline constexpr std::int32_t rightMargin = 6;  // behind right-aligned text
inline constexpr std::int32_t strip = 2;        // from the left edge to the stars
inline constexpr std::int32_t notRatedCentre = 40;

}  // namespace row_place

// Where the text of a cell begins at the earliest; `hasPicture` matters only in
// the first column.
[[nodiscard]] std::int32_t CellInset(bool firstColumn, bool hasPicture);

enum class CellAlignment { Left, Right, Centre };
// The x of a text of `textWidth` pixels in a column of `width`.
[[nodiscard]] std::int32_t CellTextX(CellAlignment alignment, std::int32_t width,
                                     std::int32_t textWidth, std::int32_t inset);

// A piece of the star strip: `width` pixels from `sourceX` in the band that begins
// at `sourceY`, put at `targetX`. A piece of no width draws nothing.
struct StripPiece {
    std::int32_t targetX = 0;
    std::int32_t sourceX = 0;
    std::int32_t sourceY = 0;
    std::int32_t width = 0;
};
struct RatingLooks {
    bool rated = false;  // otherwise the row says so in words
    std::int32_t bandHeight = 0;
    StripPiece lit;
    StripPiece rest;
};
// `rating` is 1 to 10; any other counts as none. The strip has the lit band above
// and the unlit one below. An unticked row shows its stars unlit and nothing
// behind them.
[[nodiscard]] RatingLooks LooksOfRating(std::int64_t rating, bool ticked, std::int32_t stripWidth,
                                        std::int32_t stripHeight);

#include "mainwindow/row_looks.h"

std::int32_t CellInset(bool firstColumn, bool hasPicture) {
    if (!firstColumn) return 6;
    return hasPicture ? 42 : 24;
}

std::int32_t CellTextX(CellAlignment alignment, std::int32_t width, std::int32_t textWidth,
                       std::int32_t inset) {
    switch (alignment) {
        case CellAlignment::Right:
            return width - textWidth - row_place::rightMargin;
        case CellAlignment::Centre:
            return width / 2 - textWidth / 2;
        case CellAlignment::Left:
            break;
    }
    return inset;
}

RatingLooks LooksOfRating(std::int64_t rating, bool ticked, std::int32_t stripWidth,
                          std::int32_t stripHeight) {
    RatingLooks looks;
    if (rating < 1 || rating > 10) return looks;
    looks.rated = true;
    looks.bandHeight = stripHeight / 2;
    const std::int32_t unlitBand = looks.bandHeight + 2;
    const std::int32_t litWidth = stripWidth * static_cast<std::int32_t>(rating) / 10;
    looks.lit = {row_place::strip, 0, ticked ? 0 : unlitBand, litWidth};
    if (ticked) {
        looks.rest = {litWidth + row_place::strip, litWidth, unlitBand, stripWidth - litWidth};
    }
    return looks;
}

// What colour a gradient has where.
#pragma once

#include <cstdint>

// COLORREF values, blue in the high byte.
struct clCornerColours {
    std::uint32_t topLeft = 0;
    std::uint32_t topRight = 0;
    std::uint32_t bottomLeft = 0;
    std::uint32_t bottomRight = 0;
};

// Each side of one colour: every column is of one colour then. Four equal
// colours run across too.
bool RunsAcross(const clCornerColours& colours);

// The colour at `distance` of `span` on the way from one colour to the other:
// each channel by itself, truncating towards the channel of `from`. A span below
// 1 counts as 1.
std::uint32_t BlendColours(std::uint32_t from, std::uint32_t to, std::int32_t distance,
                           std::int32_t span);

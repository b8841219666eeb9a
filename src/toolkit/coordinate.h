// Coordinates that may be anchored to the size of what they lie in.
#pragma once

#include <cstdint>

// The flag bits of a coded coordinate, above the number of pixels. They are
// tested and removed in the order in which they stand here. A negative offset is
// written with `negative`; a negative number would read as all flags.
namespace anchor {

inline constexpr std::int32_t half = 0x10000;          // start from half the parent's size
inline constexpr std::int32_t end = 0x20000;           // add the parent's size
inline constexpr std::int32_t lessHalfSize = 0x80000;  // less half of the own size
inline constexpr std::int32_t lessSize = 0x40000;      // less the own size
inline constexpr std::int32_t negative = 0x100000;     // the offset counts backwards

inline constexpr std::int32_t centred = half | lessHalfSize;
inline constexpr std::int32_t beforeEnd = end | negative;

}  // namespace anchor

struct clExtent {
    std::int32_t width = 0;
    std::int32_t height = 0;
};

struct clPoint {
    std::int32_t x = 0;
    std::int32_t y = 0;
};

// Coded coordinates in the data of a primitive, plain pixels once resolved.
struct clArea {
    std::int32_t left = 0;
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
};

// A coded coordinate as pixels from the parent's edge. `parentSize` and
// `ownSize` are those of the same axis; halves truncate towards zero. Sums
// beyond 32 bits wrap.
std::int32_t ResolveCoordinate(std::int32_t coded, std::int32_t parentSize, std::int32_t ownSize);

// The point of something of the size `own`, from `origin` on.
clPoint ResolvePoint(const clPoint& coded, const clExtent& parent, const clExtent& own,
                     const clPoint& origin);

// The edges from `origin` on. The own size is right less left and bottom less
// top of the coded values as they stand.
clArea ResolveArea(const clArea& coded, const clExtent& parent, const clPoint& origin);

// Whether something with this condition shows: all bits of the condition are set
// in the flags. Condition 0 always shows.
bool ConditionHolds(std::uint32_t condition, std::uint32_t stateFlags);

// Grows `extent` to hold the right and bottom edge of an area with these coded
// edges. Nothing is there yet to anchor to, so that only fixed offsets count;
// a negative edge counts as 0.
void IncludeArea(clExtent& extent, const clArea& coded);
// The same for a line, of which both ends count.
void IncludeLine(clExtent& extent, const clPoint& from, const clPoint& to);
// The same for something of the size `own` at a coded point: its place is held
// to 0 first, so that what is centred counts from 0. `beyond` is added to the edges.
void IncludeItem(clExtent& extent, const clPoint& coded, const clExtent& own,
                 const clExtent& beyond = {});

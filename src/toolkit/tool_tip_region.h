// The clickable parts of a tip.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/string.h"
#include "toolkit/coordinate.h"
#include "toolkit/font.h"

// A link, or an icon if the link has no text, at a place of the tip's client area.
// A plain value but for the icons. The tooltip mutex guards those of a tip.
class clRegion {
public:
    // Gets the region's argument, on the tips' thread and with the tooltip mutex
    // held: it may hide or stop the tip, but not delete it, and should be quick.
    using Callback = void (*)(std::int64_t argument);

    static constexpr COLORREF defaultColour = 0xFF0000;
    static constexpr COLORREF noColour = 0xFFFFFFFF;  // stands for the default
    static constexpr std::int32_t defaultSize = 14;

    clRegion() = default;
    clRegion(const clRegion&) = delete;
    clRegion& operator=(const clRegion&) = delete;
    ~clRegion();

    // Takes over what `other` is, with defaults for a size of 0 and `noColour`,
    // and duplicates of its icons. It begins with its normal look.
    void CopyFrom(const clRegion& other);

    bool IsIcon() const { return text.IsEmpty(); }
    // In pixels: of the normal icon, or of the text underlined in its font.
    // `dc` null: 0 for a text.
    clExtent Size(HDC dc) const;
    // Whether a point of the client area lies in it, edges included.
    bool Holds(HDC dc, const clPoint& point) const;
    void Paint(HDC dc) const;

    std::int32_t x = 0;
    std::int32_t y = 0;
    clString text;                // its lines end with CR; empty for an icon
    Callback callback = nullptr;  // null: a click hides the tip
    std::int64_t argument = 0;
    COLORREF colour = noColour;
    clString face;  // empty is "Tahoma"
    bool bold = false;
    std::int32_t size = 0;  // in pixels; 0 stands for 14
    // Owned; null for none.
    HICON normalIcon = nullptr;
    HICON hotIcon = nullptr;
    HICON pressedIcon = nullptr;
    std::uint32_t look = 0;  // a value of region_look; of icons alone
    bool pressed = false;

private:
    void MakeFont(clFont& font, HDC dc) const;
    HICON IconOfLook() const;
};

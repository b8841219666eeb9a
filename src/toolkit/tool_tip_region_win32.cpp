// shellapi.h needs windows.h before it.
#include <windows.h>
// Behind it.
#include <shellapi.h>

#include <utility>

#include "toolkit/draw.h"
#include "toolkit/tool_tip_place.h"
#include "toolkit/tool_tip_region.h"

namespace {

void ReplaceIcon(HICON& kept, HICON icon) {
    HICON const old = std::exchange(kept, icon != nullptr ? DuplicateIcon(nullptr, icon) : nullptr);
    if (old != nullptr) DestroyIcon(old);
}

}  // namespace

clRegion::~clRegion() {
    ReplaceIcon(normalIcon, nullptr);
    ReplaceIcon(hotIcon, nullptr);
    ReplaceIcon(pressedIcon, nullptr);
}

void clRegion::CopyFrom(const clRegion& other) {
    x = other.x;
    y = other.y;
    text.Assign(other.text);
    callback = other.callback;
    argument = other.argument;
    colour = other.colour == noColour ? defaultColour : other.colour;
    face.Assign(other.face);
    bold = other.bold;
    size = other.size == 0 ? defaultSize : other.size;
    ReplaceIcon(normalIcon, other.normalIcon);
    ReplaceIcon(hotIcon, other.hotIcon);
    ReplaceIcon(pressedIcon, other.pressedIcon);
    look = region_look::normal;
    pressed = false;
}

void clRegion::MakeFont(clFont& font, HDC dc) const {
    clString narrowed;
    narrowed.Assign(face);
    font.Create(dc, narrowed.Narrow(), size, colour, bold, false, true);
}

clExtent clRegion::Size(HDC dc) const {
    if (IsIcon()) return {IconWidth(normalIcon), IconHeight(normalIcon)};
    if (dc == nullptr) return {};
    clFont font;
    MakeFont(font, dc);
    return {font.TextWidth(dc, text, true), font.TextHeight(text, true)};
}

bool clRegion::Holds(HDC dc, const clPoint& point) const {
    const clExtent extent = Size(dc);
    return TipAreaHolds({x, y, x + extent.width, y + extent.height}, point);
}

HICON clRegion::IconOfLook() const {
    switch (look) {
        case region_look::hot:
            return hotIcon;
        case region_look::pressed:
            return pressedIcon;
        default:
            return normalIcon;
    }
}

void clRegion::Paint(HDC dc) const {
    if (!IsIcon()) {
        clFont font;
        MakeFont(font, dc);
        font.DrawString(x, y, text, true);
        return;
    }
    HICON const icon = IconOfLook();
    if (icon == nullptr) return;
    DrawIconEx(dc, x, y, icon, IconWidth(icon), IconHeight(icon), 0, nullptr, DI_NORMAL);
}

#include "tests/ui/icons.h"

// CLR_NONE is declared there.
#include <commctrl.h>

#include <cstddef>
#include <cstdint>
#include <vector>

namespace {

// One bit for each pixel, rows of whole words, the first pixel in the highest bit.
class MaskBits {
public:
    MaskBits(int columns, int rows)
        : width(columns),
          height(rows),
          stride(static_cast<std::size_t>((columns + 15) / 16 * 2)),
          bytes(stride * static_cast<std::size_t>(rows)) {}

    void Set(int x, int y) {
        const std::size_t at =
            static_cast<std::size_t>(y) * stride + static_cast<std::size_t>(x / 8);
        bytes[at] = static_cast<std::uint8_t>(bytes[at] | (0x80 >> (x % 8)));
    }
    HBITMAP Make() const { return CreateBitmap(width, height, 1, 1, bytes.data()); }

private:
    int width;
    int height;
    std::size_t stride;
    std::vector<std::uint8_t> bytes;
};

HICON FromBitmaps(HBITMAP mask, HBITMAP colour) {
    ICONINFO info = {};
    info.fIcon = TRUE;
    info.hbmMask = mask;
    info.hbmColor = colour;
    const HICON icon = CreateIconIndirect(&info);
    DeleteObject(mask);
    if (colour != nullptr) DeleteObject(colour);
    return icon;
}

}  // namespace

HICON MakeIcon(int width, int height, const std::function<COLORREF(int x, int y)>& colourAt) {
    const HDC screen = GetDC(nullptr);
    const HBITMAP colour = CreateCompatibleBitmap(screen, width, height);
    const HDC context = CreateCompatibleDC(screen);
    const HGDIOBJ previous = SelectObject(context, colour);
    MaskBits mask(width, height);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x) {
            const COLORREF pixel = colourAt(x, y);
            if (pixel == CLR_NONE) mask.Set(x, y);
            SetPixelV(context, x, y, pixel == CLR_NONE ? 0 : pixel);
        }
    }
    SelectObject(context, previous);
    DeleteDC(context);
    ReleaseDC(nullptr, screen);
    return FromBitmaps(mask.Make(), colour);
}

HICON MakeIcon(int width, int height, COLORREF colour) {
    return MakeIcon(width, height, [colour](int, int) { return colour; });
}

HICON MakeMonochromeIcon(int width, int height) {
    // Both masks one below the other, all clear: opaque and black.
    const MaskBits masks(width, 2 * height);
    return FromBitmaps(masks.Make(), nullptr);
}

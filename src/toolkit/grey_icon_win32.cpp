#include "toolkit/grey_icon.h"

#include <windows.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>

#include "toolkit/draw.h"
#include "toolkit/menu_layout.h"

namespace {

// A 32-bit bitmap whose pixels can be reached; black at first.
struct PixelBitmap {
    PixelBitmap(std::int32_t width, std::int32_t height) : count(width * height) {
        BITMAPINFO info = {};
        info.bmiHeader.biSize = sizeof(info.bmiHeader);
        info.bmiHeader.biWidth = width;
        info.bmiHeader.biHeight = height;
        info.bmiHeader.biPlanes = 1;
        info.bmiHeader.biBitCount = 32;
        void* bits = nullptr;
        bitmap.Reset(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
        pixels = static_cast<std::uint32_t*>(bits);
    }

    clBitmapHandle bitmap;
    std::uint32_t* pixels = nullptr;
    std::ptrdiff_t count;
};

void DrawOn(HBITMAP bitmap, HICON icon, const clExtent& size) {
    const clMemoryContext context(CreateCompatibleDC(nullptr));
    const clSelection selected(context.Get(), bitmap);
    DrawIconEx(context.Get(), 0, 0, icon, size.width, size.height, 0, nullptr, DI_NORMAL);
    // The pixels are read next, and drawing may still be on its way.
    GdiFlush();
}

}  // namespace

clIconHandle MakeGreyIcon(HICON icon) {
    const clExtent size = IconExtent(icon);
    if (size.width <= 0 || size.height <= 0) return clIconHandle();
    const PixelBitmap grey(size.width, size.height);
    ICONINFO info = {};
    if (grey.pixels == nullptr || !GetIconInfo(icon, &info)) return clIconHandle();
    const clBitmapHandle mask(info.hbmMask);
    const clBitmapHandle colour(info.hbmColor);
    DrawOn(grey.bitmap.Get(), icon, size);
    std::transform(grey.pixels, grey.pixels + grey.count, grey.pixels, GreyForm);
    info.hbmColor = grey.bitmap.Get();
    return clIconHandle(CreateIconIndirect(&info));
}

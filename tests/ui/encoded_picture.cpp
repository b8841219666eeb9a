#include "tests/ui/encoded_picture.h"

#include <cstring>

std::vector<std::uint8_t> EncodedBmp(int width, int height,
                                     const std::function<COLORREF(int x, int y)>& colourAt) {
    const auto stride = static_cast<DWORD>((width * 3 + 3) / 4 * 4);
    BITMAPFILEHEADER file = {};
    BITMAPINFOHEADER info = {};
    file.bfType = 0x4D42;  // "BM"
    file.bfOffBits = sizeof(file) + sizeof(info);
    file.bfSize = file.bfOffBits + stride * static_cast<DWORD>(height);
    info.biSize = sizeof(info);
    info.biWidth = width;
    info.biHeight = height;
    info.biPlanes = 1;
    info.biBitCount = 24;
    std::vector<std::uint8_t> bytes(file.bfSize);
    std::memcpy(bytes.data(), &file, sizeof(file));
    std::memcpy(bytes.data() + sizeof(file), &info, sizeof(info));
    for (int y = 0; y < height; ++y) {
        // The lowest row comes first.
        std::uint8_t* row =
            bytes.data() + file.bfOffBits + stride * static_cast<DWORD>(height - 1 - y);
        for (int x = 0; x < width; ++x) {
            const COLORREF colour = colourAt(x, y);
            *row++ = GetBValue(colour);
            *row++ = GetGValue(colour);
            *row++ = GetRValue(colour);
        }
    }
    return bytes;
}

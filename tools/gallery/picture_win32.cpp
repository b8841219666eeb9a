#include "tools/gallery/picture.h"

#include <cstring>

#include "toolkit/gdi_handle.h"

namespace {

BITMAPINFOHEADER HeaderOf(const XMemBitmap& picture) {
    BITMAPINFOHEADER header = {};
    header.biSize = sizeof header;
    header.biWidth = picture.Width();
    header.biHeight = picture.Height();
    header.biPlanes = 1;
    header.biBitCount = 32;
    return header;
}

}  // namespace

void CatchScreen(const RECT& place, XMemBitmap& picture) {
    const std::int32_t width = place.right - place.left;
    const std::int32_t height = place.bottom - place.top;
    const clScreenContext screen;
    picture.CreateEmpty(screen.Get(), width, height);
    BitBlt(picture.Context(), 0, 0, width, height, screen.Get(), place.left, place.top, SRCCOPY);
}

std::vector<std::uint32_t> PixelsOf(const XMemBitmap& picture) {
    std::vector<std::uint32_t> pixels(static_cast<std::size_t>(picture.Width()) *
                                      static_cast<std::size_t>(picture.Height()));
    BITMAPINFO wanted = {};
    wanted.bmiHeader = HeaderOf(picture);
    GetDIBits(picture.Context(), picture.Bitmap(), 0, static_cast<UINT>(picture.Height()),
              pixels.data(), &wanted, DIB_RGB_COLORS);
    for (std::uint32_t& pixel : pixels)
        pixel &= 0xFFFFFF;
    return pixels;
}

std::vector<std::uint8_t> EncodeBmp(const XMemBitmap& picture) {
    const std::vector<std::uint32_t> pixels = PixelsOf(picture);
    const std::size_t size = pixels.size() * sizeof pixels[0];
    const BITMAPINFOHEADER header = HeaderOf(picture);
    BITMAPFILEHEADER start = {};
    start.bfType = 0x4D42;  // "BM"
    start.bfOffBits = sizeof start + sizeof header;
    start.bfSize = start.bfOffBits + static_cast<DWORD>(size);
    std::vector<std::uint8_t> bytes(start.bfSize);
    std::memcpy(bytes.data(), &start, sizeof start);
    std::memcpy(bytes.data() + sizeof start, &header, sizeof header);
    std::memcpy(bytes.data() + start.bfOffBits, pixels.data(), size);
    return bytes;
}

bool WriteToFile(const clString& path, const std::vector<std::uint8_t>& bytes) {
    HANDLE const file = CreateFileW(path.Chars(), GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return false;
    const auto size = static_cast<DWORD>(bytes.size());
    DWORD written = 0;
    const bool isWritten = WriteFile(file, bytes.data(), size, &written, nullptr) != FALSE;
    CloseHandle(file);
    return isWritten && written == size;
}

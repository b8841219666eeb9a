#include <windows.h>
// These need windows.h before them.
#include <objbase.h>
#include <ocidl.h>
#include <olectl.h>

#include <cstring>
#include <utility>

#include "toolkit/gdi_handle.h"
#include "toolkit/mem_bitmap.h"

namespace {

constexpr std::int64_t smallestPicture = 8;
constexpr int himetricPerInch = 2540;

template <class Interface>
struct ComTraits {
    using Raw = Interface*;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { raw->Release(); }
};

using StreamHandle = clHandle<ComTraits<IStream>>;
using PictureHandle = clHandle<ComTraits<IPicture>>;

struct GlobalTraits {
    using Raw = HGLOBAL;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { GlobalFree(raw); }
};

using GlobalMemory = clHandle<GlobalTraits>;

BITMAP Describe(HBITMAP bitmap) {
    BITMAP description = {};
    if (bitmap != nullptr) GetObjectW(bitmap, sizeof(description), &description);
    return description;
}

GlobalMemory CopyToGlobal(const void* bytes, std::int64_t size) {
    GlobalMemory memory(GlobalAlloc(GMEM_MOVEABLE | GMEM_ZEROINIT, static_cast<SIZE_T>(size)));
    if (!memory.IsValid()) return memory;
    std::memcpy(GlobalLock(memory.Get()), bytes, static_cast<std::size_t>(size));
    GlobalUnlock(memory.Get());
    return memory;
}

// The stream reads the memory, which must outlive the call only.
PictureHandle LoadPicture(HGLOBAL memory, std::int64_t size) {
    IStream* stream = nullptr;
    if (FAILED(CreateStreamOnHGlobal(memory, FALSE, &stream))) return PictureHandle();
    const StreamHandle owner(stream);
    void* picture = nullptr;
    if (FAILED(OleLoadPicture(stream, static_cast<LONG>(size), FALSE, IID_IPicture, &picture))) {
        return PictureHandle();
    }
    return PictureHandle(static_cast<IPicture*>(picture));
}

// The picture in a bitmap for this screen, selected nowhere; none if it can't be made.
clBitmapHandle Render(IPicture& picture) {
    OLE_XSIZE_HIMETRIC width = 0;
    OLE_YSIZE_HIMETRIC height = 0;
    picture.get_Width(&width);
    picture.get_Height(&height);
    const clScreenContext screen;
    const int pixelWidth = MulDiv(width, GetDeviceCaps(screen.Get(), LOGPIXELSX), himetricPerInch);
    const int pixelHeight =
        MulDiv(height, GetDeviceCaps(screen.Get(), LOGPIXELSY), himetricPerInch);
    clBitmapHandle bitmap(CreateCompatibleBitmap(screen.Get(), pixelWidth, pixelHeight));
    const clMemoryContext context(CreateCompatibleDC(screen.Get()));
    const clSelection selected(context.Get(), bitmap.Get());
    // HIMETRIC runs upwards, so the source begins at its upper end.
    picture.Render(context.Get(), 0, 0, pixelWidth, pixelHeight, 0, height, width, -height,
                   nullptr);
    return bitmap;
}

}  // namespace

void XMemBitmap::ReleaseContext() {
    if (context != nullptr) {
        SelectObject(context, previousBitmap);
        if (ownsContext) DeleteDC(context);
    }
    previousBitmap = nullptr;
    context = nullptr;
    ownsContext = false;
}

void XMemBitmap::Release() {
    ReleaseContext();
    if (bitmap != nullptr) DeleteObject(std::exchange(bitmap, nullptr));
}

void XMemBitmap::MakeContext(HDC compatibleWith) {
    ReleaseContext();
    if (bitmap == nullptr) return;
    clMemoryContext made(CreateCompatibleDC(compatibleWith));
    if (!made.IsValid()) return;
    previousBitmap = static_cast<HBITMAP>(SelectObject(made.Get(), bitmap));
    context = made.Release();
    ownsContext = true;
}

void XMemBitmap::CreateEmpty(HDC compatibleWith, std::int32_t width, std::int32_t height) {
    Release();
    if (width <= 0 || height <= 0) return;
    const clScreenContext screen;
    const HDC model = compatibleWith != nullptr ? compatibleWith : screen.Get();
    bitmap = CreateCompatibleBitmap(model, width, height);
    MakeContext(model);
}

void XMemBitmap::LoadResource(std::uint32_t id) {
    Release();
    bitmap = static_cast<HBITMAP>(
        LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(id), IMAGE_BITMAP, 0, 0, 0));
    const clScreenContext screen;
    MakeContext(screen.Get());
}

void XMemBitmap::CopyFromBitmap(HBITMAP source) {
    Release();
    const BITMAP size = Describe(source);
    if (size.bmWidth <= 0 || size.bmHeight == 0) return;
    const clScreenContext screen;
    bitmap = CreateCompatibleBitmap(screen.Get(), size.bmWidth, size.bmHeight);
    {
        const clMemoryContext from(CreateCompatibleDC(screen.Get()));
        const clMemoryContext to(CreateCompatibleDC(screen.Get()));
        const clSelection selectedSource(from.Get(), source);
        const clSelection selectedCopy(to.Get(), bitmap);
        BitBlt(to.Get(), 0, 0, size.bmWidth, size.bmHeight, from.Get(), 0, 0, SRCCOPY);
    }
    MakeContext(screen.Get());
}

void XMemBitmap::CopyFrom(const XMemBitmap& other) {
    if (&other == this) return;
    // Without a context the other bitmap is free to be selected.
    if (other.context == nullptr) {
        CopyFromBitmap(other.bitmap);
        return;
    }
    CreateEmpty(other.context, other.Width(), other.Height());
    other.Blit(context, 0, 0);
}

std::int32_t XMemBitmap::Width() const {
    return Describe(bitmap).bmWidth;
}

std::int32_t XMemBitmap::Height() const {
    return Describe(bitmap).bmHeight;
}

void XMemBitmap::Blit(HDC target, std::int32_t x, std::int32_t y, std::int32_t width,
                      std::int32_t height, std::int32_t sourceX, std::int32_t sourceY,
                      DWORD rasterOp) const {
    if (context == nullptr || target == nullptr || bitmap == nullptr) return;
    BitBlt(target, x, y, width == -1 ? Width() : width, height == -1 ? Height() : height, context,
           sourceX, sourceY, rasterOp);
}

void XMemBitmap::FillColour(COLORREF colour) {
    if (context == nullptr) return;
    const clBrushHandle brush(CreateSolidBrush(colour));
    const RECT all = {0, 0, Width(), Height()};
    FillRect(context, &all, brush.Get());
}

bool XMemBitmap::LoadEncoded(const void* bytes, std::int64_t size) {
    Release();
    if (bytes == nullptr || size < smallestPicture || size > LONG_MAX) return false;
    const GlobalMemory memory = CopyToGlobal(bytes, size);
    if (!memory.IsValid()) return false;
    const PictureHandle picture = LoadPicture(memory.Get(), size);
    if (!picture.IsValid()) return false;
    bitmap = Render(*picture.Get()).Release();
    return bitmap != nullptr;
}

// A bitmap with a device context of its own.
#pragma once

#include <windows.h>

#include <cstdint>

// Everything that loads or makes a bitmap releases the earlier one first and
// leaves none where it fails: `Width` and `Height` are then 0 and `Blit` does
// nothing. While there is a context, the bitmap is selected into it. The thread
// that paints with it.
class XMemBitmap {
public:
    XMemBitmap() = default;
    XMemBitmap(const XMemBitmap&) = delete;
    XMemBitmap& operator=(const XMemBitmap&) = delete;
    ~XMemBitmap() { Release(); }

    // Puts the context's previous bitmap back and gives all handles up.
    void Release();
    // Makes the context for the bitmap, if there is one; an earlier context goes.
    // Null is the screen.
    void MakeContext(HDC compatibleWith);
    // Gives the context up and keeps the bitmap, which any thread may then select.
    void ReleaseContext();
    // A bitmap of this size in pixels, with its context. None unless both are
    // above 0. Null is the screen.
    void CreateEmpty(HDC compatibleWith, std::int32_t width, std::int32_t height);
    // The bitmap with this number among the program's resources, in its own size;
    // the low 16 bits of `id` count.
    void LoadResource(std::uint32_t id);
    // A copy of `bitmap`, compatible with the screen. It must not be selected
    // into a context meanwhile.
    void CopyFromBitmap(HBITMAP bitmap);
    // A copy of another one, compatible with its context.
    void CopyFrom(const XMemBitmap& other);
    // Decodes what the platform's OLE picture loader reads from `size` bytes; less
    // than 8 fail. Leaves the bitmap without a context: `MakeContext` follows.
    // COM must be initialised on the thread.
    [[nodiscard]] bool LoadEncoded(const void* bytes, std::int64_t size);

    // In pixels; 0 without a bitmap.
    std::int32_t Width() const;
    std::int32_t Height() const;
    // Copies to (x, y) of `target`. -1 for width or height is the bitmap's own.
    // Does nothing without a target, a bitmap or a context.
    void Blit(HDC target, std::int32_t x, std::int32_t y, std::int32_t width = -1,
              std::int32_t height = -1, std::int32_t sourceX = 0, std::int32_t sourceY = 0,
              DWORD rasterOp = SRCCOPY) const;
    // Fills the whole bitmap.
    void FillColour(COLORREF colour);

    // Still owned here; null for none.
    HBITMAP Bitmap() const { return bitmap; }
    HDC Context() const { return context; }

private:
    HBITMAP bitmap = nullptr;
    HBITMAP previousBitmap = nullptr;
    HDC context = nullptr;
    bool ownsContext = false;
};

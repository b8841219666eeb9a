// A bitmap among the resources.
#pragma once

#include <windows.h>

// In a context, with its own depth.
class LoadedBitmap {
public:
    explicit LoadedBitmap(int number)
        : bitmap(
              static_cast<HBITMAP>(LoadImageW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(number),
                                              IMAGE_BITMAP, 0, 0, LR_CREATEDIBSECTION))),
          context(CreateCompatibleDC(nullptr)),
          previous(SelectObject(context, bitmap)) {}
    LoadedBitmap(const LoadedBitmap&) = delete;
    LoadedBitmap& operator=(const LoadedBitmap&) = delete;
    ~LoadedBitmap() {
        SelectObject(context, previous);
        DeleteDC(context);
        DeleteObject(bitmap);
    }

    BITMAP Description() const {
        BITMAP description = {};
        GetObjectW(bitmap, sizeof(description), &description);
        return description;
    }
    HDC Dc() const { return context; }

private:
    HBITMAP bitmap;
    HDC context;
    HGDIOBJ previous;
};

// What measuring and painting a display list share.
#pragma once

#include <windows.h>

#include <cstdint>

#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/text.h"

// The bitmap of a picture: its own, or for an encoded one a decoded copy that
// lives as long as this object.
class clShownPicture {
public:
    explicit clShownPicture(const clPictureSource& source);

    // In pixels; 0 without a bitmap.
    clExtent Size() const;
    // Copies it to the point of `target`: from the bitmap's own context, or where
    // it keeps none, from one that lasts as long as this call.
    void Blit(HDC target, const clPoint& at, DWORD rasterOp) const;

private:
    XMemBitmap decoded;
    const XMemBitmap* image;
};

// The icon of a record: its own, or a duplicate of the external one that lives
// as long as this object.
class clShownIcon {
public:
    explicit clShownIcon(const clTextIcon& record);

    HICON Get() const { return icon; }

private:
    clIconHandle duplicate;
    HICON icon;
};

// Whether the colour of a string matters, as it does for all but measuring.
enum class TextUse : std::uint8_t { Paint, Measure };

// The font for one string after the other: consecutive strings that look alike
// share it. The records must outlive this object.
class clTextFonts {
public:
    clTextFonts(HDC dc, TextUse use) : context(dc), textUse(use) {}

    // The font of `text`, selected into the context.
    clFont& For(clTextString& text);
    // What is written for `text`: itself, or shortened to its maximum width. The
    // font must be that of `text`.
    clString Shown(const clTextString& text) const;
    // The size of `shown`, drawn in the place of `text`.
    clExtent Extent(const clTextString& text, const clString& shown) const;

private:
    bool LooksLikePrevious(const clTextString& text) const;

    HDC context;
    TextUse textUse;
    clFont font;
    const clTextString* previous = nullptr;
};

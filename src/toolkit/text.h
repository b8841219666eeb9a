// A retained display list: what it holds, it measures and paints.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/bytes.h"
#include "foundation/string.h"
#include "toolkit/coordinate.h"
#include "toolkit/gradient.h"
#include "toolkit/mem_bitmap.h"
#include "toolkit/owned_list.h"

// The primitives. Coordinates are coded (see coordinate.h). One with a condition
// only shows while all its bits are set in the list's state flags. The layer is
// the list's to set. Colours are COLORREF values.

struct clTextFill {
    clArea area{};
    COLORREF colour = 0;
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
};

struct clTextBox {
    clArea area{};
    COLORREF brushColour = 0;
    COLORREF penColour = 0;
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
    std::int32_t cornerRadius = 0;  // on both axes, as RoundRect takes it
};

struct clTextFrame {
    clArea area{};
    COLORREF colour = 0;
    bool focus = false;  // a focus rectangle, without colour
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
};

// The painted gradient, kept until its size changes. Not copied with its record.
struct clGradientCache {
    clGradientCache() = default;
    clGradientCache(const clGradientCache&) : clGradientCache() {}
    clGradientCache& operator=(const clGradientCache&) = delete;

    void Drop();

    XMemBitmap bitmap;
    std::int32_t width = 0;
    std::int32_t height = 0;
};

struct clTextGradient {
    clArea area{};
    clCornerColours colours{};
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
    clGradientCache cache{};
    bool dropCache = false;  // paint it anew each time
};

// What a picture shows. Of an external image and an own encoded one that is not
// empty, the first goes before the bitmap; both are decoded at each paint.
struct clPictureSource {
    clPictureSource() = default;
    clPictureSource(const clPictureSource& other);  // copies bitmap and bytes
    clPictureSource& operator=(const clPictureSource&) = delete;

    XMemBitmap image;
    clByteBuffer encoded;
    // Not owned; must live as long as the record. Null for none.
    const clByteBuffer* external = nullptr;
};

struct clTextPicture {
    clPoint at{};
    DWORD rasterOp = 0;  // 0 is SRCCOPY
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
    clPictureSource source{};
};

struct clTextLine {
    COLORREF colour = 0;
    clPoint from{};
    clPoint to{};  // not painted itself
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
};

struct clTextIcon {
    HICON icon = nullptr;  // owned by the list once it is in one
    clPoint at{};
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
    // The owner's icon, read at each paint, goes before the own one. Not owned;
    // must live as long as the record. Null, or pointing at null, for none.
    const HICON* external = nullptr;
};

struct clTextString {
    clPoint at{};
    clString text{};  // its lines end with CR
    clString face{};  // empty is "Tahoma"
    COLORREF colour = 0;
    bool bold = false;
    bool italic = false;
    bool underline = false;
    std::int32_t size = 0;          // 0 is 13
    std::int32_t maximumWidth = 0;  // pixels; 0 is none, otherwise "..." shortens it
    std::uint32_t condition = 0;
    std::int32_t layer = 0;
};

// Layers lie on top of each other in the order of their numbers, whatever was
// added first. Within a layer fills lie below boxes, then come gradients,
// frames, lines, pictures, icons and texts, each kind in the order in which it
// was added. One thread at a time; pictures in encoded form need COM.
class clText {
public:
    clText() = default;
    clText(const clText&) = delete;
    clText& operator=(const clText&) = delete;
    ~clText() { Clear(); }

    // Each appends a copy of the record on `layer`; layer 0 is the next free one.
    void AddFill(const clTextFill& fill, std::int32_t layer = 0);
    void AddBox(const clTextBox& box, std::int32_t layer = 0);
    void AddFrame(const clTextFrame& frame, std::int32_t layer = 0);
    void AddGradient(const clTextGradient& gradient, std::int32_t layer = 0);
    // With the record's own source, or with a copy of the one given.
    void AddPicture(const clTextPicture& picture, std::int32_t layer = 0);
    void AddPicture(const clTextPicture& picture, HBITMAP bitmap, std::int32_t layer = 0);
    void AddPicture(const clTextPicture& picture, const XMemBitmap& image, std::int32_t layer = 0);
    void AddPicture(const clTextPicture& picture, const void* bytes, std::int64_t size,
                    std::int32_t layer = 0);
    void AddLine(const clTextLine& line, std::int32_t layer = 0);
    // Duplicates the icon.
    void AddIcon(const clTextIcon& icon, std::int32_t layer = 0);
    void AddText(const clTextString& text, std::int32_t layer = 0);

    // Gives up the contexts of what is there, so that each painting makes and ends
    // its own: a context is for the thread that made it, and the list may now be
    // painted and cleared by another one. Gradients are painted anew each time.
    void KeepNoContexts();
    // Empties the list and zeroes padding, minimums, layer count and state flags.
    void Clear();
    // `Clear`, then a copy of each record of `other`, one layer higher, so that
    // layer 0 stays empty. Not from itself.
    void CopyFrom(const clText& other);
    // The size in pixels that holds everything, whatever its layer and condition.
    // Nothing is there yet to anchor to: only fixed offsets count.
    clExtent Measure() const;
    // Measures first if dirty, and paints all layers with (x, y) as origin.
    // Without a context nothing is painted.
    void Paint(HDC context, std::int32_t x, std::int32_t y);
    void PaintLayer(HDC context, std::int32_t x, std::int32_t y, std::int32_t layer);

    bool IsEmpty() const { return layerCount == 0; }

    // Whoever changes a record, a minimum or the padding sets `dirty`.
    clOwnedList<clTextFill> fills;
    clOwnedList<clTextBox> boxes;
    clOwnedList<clTextFrame> frames;
    clOwnedList<clTextGradient> gradients;
    clOwnedList<clTextPicture> pictures;
    clOwnedList<clTextLine> lines;
    clOwnedList<clTextIcon> icons;
    clOwnedList<clTextString> texts;
    // What anchors refer to, set when measured by `Paint`.
    std::int32_t width = 0;
    std::int32_t height = 0;
    bool dirty = true;
    // Added to the measured size, before the minimums.
    std::int32_t paddingX = 0;
    std::int32_t paddingY = 0;
    std::int32_t minimumWidth = 0;
    std::int32_t minimumHeight = 0;
    std::int32_t layerCount = 0;
    std::uint32_t stateFlags = 0;

private:
    template <class Record>
    Record* Append(clOwnedList<Record>& list, const Record& record, std::int32_t layer);
    std::int32_t TakeLayer(std::int32_t layer);
};

#include "toolkit/text_paint.h"

#include <windows.h>

#include <cstdint>

#include "toolkit/draw.h"

clShownPicture::clShownPicture(const clPictureSource& source) : image(&source.image) {
    const bool hasExternal = source.external != nullptr && source.external->size != 0;
    const clByteBuffer& encoded = hasExternal ? *source.external : source.encoded;
    if (encoded.size == 0) return;
    image = &decoded;
    if (decoded.LoadEncoded(encoded.data, encoded.size)) decoded.MakeContext(nullptr);
}

clExtent clShownPicture::Size() const {
    return {image->Width(), image->Height()};
}

void clShownPicture::Blit(HDC target, const clPoint& at, DWORD rasterOp) const {
    if (image->Context() != nullptr || image->Bitmap() == nullptr) {
        image->Blit(target, at.x, at.y, -1, -1, 0, 0, rasterOp);
        return;
    }
    const clMemoryContext own(CreateCompatibleDC(target));
    if (!own.IsValid()) return;
    const clSelection selected(own.Get(), image->Bitmap());
    const clExtent size = Size();
    BitBlt(target, at.x, at.y, size.width, size.height, own.Get(), 0, 0, rasterOp);
}

clShownIcon::clShownIcon(const clTextIcon& record) : icon(record.icon) {
    if (record.external == nullptr || *record.external == nullptr) return;
    duplicate.Reset(CopyIcon(*record.external));
    icon = duplicate.Get();
}

bool clTextFonts::LooksLikePrevious(const clTextString& text) const {
    if (previous == nullptr) return false;
    const clTextString& a = *previous;
    return a.face.Equals(text.face) && a.size == text.size && a.bold == text.bold &&
           a.italic == text.italic && a.underline == text.underline &&
           (a.colour == text.colour || textUse == TextUse::Measure);
}

clFont& clTextFonts::For(clTextString& text) {
    if (!LooksLikePrevious(text)) {
        const std::int32_t size = text.size != 0 ? text.size : defaultTextSize;
        font.Create(context, text.face.Narrow(), size, text.colour, text.bold, text.italic,
                    text.underline);
    }
    previous = &text;
    return font;
}

clString clTextFonts::Shown(const clTextString& text) const {
    clString shown = text.text;
    if (text.maximumWidth != 0) font.FitWithEllipsis(text.maximumWidth, shown);
    return shown;
}

clExtent clTextFonts::Extent(const clTextString& text, const clString& shown) const {
    return {font.TextWidth(nullptr, shown, true, text.at.x), font.TextHeight(shown, true)};
}

namespace {

RECT RectOf(const clArea& area) {
    return {area.left, area.top, area.right, area.bottom};
}

// Paints the primitives of one layer, seen from `origin`.
class LayerPainter {
public:
    LayerPainter(const clText& shown, HDC dc, const clPoint& from)
        : list(shown), context(dc), origin(from) {}

    void Paint(const clTextFill& fill) const;
    void Paint(const clTextBox& box) const;
    void Paint(clTextGradient& gradient) const;
    void Paint(const clTextFrame& frame) const;
    void Paint(const clTextLine& line) const;
    void Paint(const clTextPicture& picture) const;
    void Paint(const clTextIcon& icon) const;
    void Paint(clTextString& text, clTextFonts& fonts) const;

private:
    clExtent Parent() const { return {list.width, list.height}; }
    clArea Place(const clArea& coded) const { return ResolveArea(coded, Parent(), origin); }
    clPoint Place(const clPoint& coded, const clExtent& own) const {
        return ResolvePoint(coded, Parent(), own, origin);
    }

    const clText& list;
    HDC context;
    clPoint origin;
};

void LayerPainter::Paint(const clTextFill& fill) const {
    const RECT place = RectOf(Place(fill.area));
    const clBrushHandle brush(CreateSolidBrush(fill.colour));
    FillRect(context, &place, brush.Get());
}

void LayerPainter::Paint(const clTextBox& box) const {
    const clArea place = Place(box.area);
    const clBrushHandle brush(CreateSolidBrush(box.brushColour));
    const clPenHandle pen(CreatePen(PS_SOLID, 0, box.penColour));
    const clSelection selectedBrush(context, brush.Get());
    const clSelection selectedPen(context, pen.Get());
    if (box.cornerRadius == 0)
        Rectangle(context, place.left, place.top, place.right, place.bottom);
    else
        RoundRect(context, place.left, place.top, place.right, place.bottom, box.cornerRadius,
                  box.cornerRadius);
}

void LayerPainter::Paint(clTextGradient& gradient) const {
    const clArea place = Place(gradient.area);
    const std::int32_t width = place.right - place.left;
    const std::int32_t height = place.bottom - place.top;
    clGradientCache& cache = gradient.cache;
    if (cache.width != width || cache.height != height) {
        cache.bitmap.CreateEmpty(nullptr, width, height);
        // Where no bitmap could be had now, the next painting tries again.
        const bool isMade = cache.bitmap.Context() != nullptr;
        cache.width = isMade ? width : 0;
        cache.height = isMade ? height : 0;
        if (isMade) DrawGradient(cache.bitmap.Context(), {0, 0, width, height}, gradient.colours);
    }
    cache.bitmap.Blit(context, place.left, place.top);
    if (gradient.dropCache) cache.Drop();
}

void LayerPainter::Paint(const clTextFrame& frame) const {
    const RECT place = RectOf(Place(frame.area));
    if (frame.focus) {
        DrawFocusRect(context, &place);
        return;
    }
    const clBrushHandle brush(CreateSolidBrush(frame.colour));
    FrameRect(context, &place, brush.Get());
}

void LayerPainter::Paint(const clTextLine& line) const {
    const clArea place = Place({line.from.x, line.from.y, line.to.x, line.to.y});
    const clPenHandle pen(CreatePen(PS_SOLID, 0, line.colour));
    const clSelection selected(context, pen.Get());
    MoveToEx(context, place.left, place.top, nullptr);
    LineTo(context, place.right, place.bottom);
}

void LayerPainter::Paint(const clTextPicture& picture) const {
    const clShownPicture shown(picture.source);
    shown.Blit(context, Place(picture.at, shown.Size()),
               picture.rasterOp != 0 ? picture.rasterOp : SRCCOPY);
}

void LayerPainter::Paint(const clTextIcon& icon) const {
    const clShownIcon shown(icon);
    if (shown.Get() == nullptr) return;
    const clExtent size = IconExtent(shown.Get());
    const clPoint at = Place(icon.at, size);
    DrawIconEx(context, at.x, at.y, shown.Get(), size.width, size.height, 0, nullptr, DI_NORMAL);
}

void LayerPainter::Paint(clTextString& text, clTextFonts& fonts) const {
    clFont& font = fonts.For(text);
    const clString shown = fonts.Shown(text);
    const clPoint at = Place(text.at, fonts.Extent(text, shown));
    font.DrawString(at.x, at.y, shown, true);
}

}  // namespace

void clText::PaintLayer(HDC context, std::int32_t x, std::int32_t y, std::int32_t layer) {
    if (context == nullptr) return;
    const LayerPainter painter(*this, context, {x, y});
    const auto paintAll = [&](const auto& list, auto&&... more) {
        for (std::int64_t i = 0; i < list.Count(); ++i) {
            auto& record = *list.At(i);
            if (record.layer != layer || !ConditionHolds(record.condition, stateFlags)) continue;
            painter.Paint(record, more...);
        }
    };
    paintAll(fills);
    paintAll(boxes);
    paintAll(gradients);
    paintAll(frames);
    paintAll(lines);
    paintAll(pictures);
    paintAll(icons);
    clTextFonts fonts(context, TextUse::Paint);
    paintAll(texts, fonts);
}

void clText::Paint(HDC context, std::int32_t x, std::int32_t y) {
    if (dirty) {
        dirty = false;
        const clExtent measured = Measure();
        width = measured.width;
        height = measured.height;
    }
    for (std::int32_t layer = 0; layer < layerCount; ++layer)
        PaintLayer(context, x, y, layer);
}

#include <windows.h>

#include <algorithm>
#include <cstdint>

#include "toolkit/draw.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/text.h"
#include "toolkit/text_paint.h"

namespace {

// What a string takes to the right of and below its last line.
constexpr std::int32_t spaceBehindText = 4;
constexpr std::int32_t spaceBelowText = 1;

template <class Record>
void IncludeAreas(clExtent& extent, const clOwnedList<Record>& list) {
    for (std::int64_t i = 0; i < list.Count(); ++i)
        IncludeArea(extent, list.At(i)->area);
}

void IncludePictures(clExtent& extent, const clOwnedList<clTextPicture>& pictures) {
    for (std::int64_t i = 0; i < pictures.Count(); ++i) {
        const clTextPicture& picture = *pictures.At(i);
        IncludeItem(extent, picture.at, clShownPicture(picture.source).Size());
    }
}

void IncludeLines(clExtent& extent, const clOwnedList<clTextLine>& lines) {
    for (std::int64_t i = 0; i < lines.Count(); ++i)
        IncludeLine(extent, lines.At(i)->from, lines.At(i)->to);
}

void IncludeIcons(clExtent& extent, const clOwnedList<clTextIcon>& icons) {
    for (std::int64_t i = 0; i < icons.Count(); ++i)
        IncludeItem(extent, icons.At(i)->at, IconExtent(clShownIcon(*icons.At(i)).Get()));
}

void IncludeTexts(clExtent& extent, const clOwnedList<clTextString>& texts) {
    if (texts.Count() == 0) return;
    const clScreenContext screen;
    clTextFonts fonts(screen.Get(), TextUse::Measure);
    for (std::int64_t i = 0; i < texts.Count(); ++i) {
        clTextString& text = *texts.At(i);
        fonts.For(text);
        const clExtent own = fonts.Extent(text, fonts.Shown(text));
        IncludeItem(extent, text.at, own, {spaceBehindText, spaceBelowText});
    }
}

}  // namespace

clExtent clText::Measure() const {
    clExtent extent;
    IncludeAreas(extent, fills);
    IncludeAreas(extent, boxes);
    IncludeAreas(extent, frames);
    IncludeAreas(extent, gradients);
    IncludePictures(extent, pictures);
    IncludeLines(extent, lines);
    IncludeIcons(extent, icons);
    IncludeTexts(extent, texts);
    return {std::max(extent.width + paddingX, minimumWidth),
            std::max(extent.height + paddingY, minimumHeight)};
}

#include "tools/gallery/button_strip.h"

#include "toolkit/text.h"

namespace {

constexpr std::int32_t frameWidth = 45;
constexpr std::int32_t frameHeight = 49;
constexpr COLORREF black = 0x000000;
constexpr COLORREF white = 0xFFFFFF;

struct FrameLook {
    ButtonFrame frame;
    ButtonLayout layout;
    COLORREF face;
    COLORREF edge;
    const wchar_t* letter;
    bool isOverlay;  // an outline alone, where a mask lets the frame below shine through
};

constexpr FrameLook looks[] = {
    {ButtonFrame::Normal, ButtonLayout::Normal, 0xF4E8DC, 0xB08050, L"N", false},
    {ButtonFrame::Pressed, ButtonLayout::Pressed, 0xC8A070, 0x704010, L"P", false},
    {ButtonFrame::Hot, ButtonLayout::Hot, 0xFFF8E0, 0xE0A030, L"H", false},
    {ButtonFrame::Focus, ButtonLayout::FocusOverlay, 0, 0x2040E0, L"", true},
    {ButtonFrame::Disabled, ButtonLayout::Disabled, 0xF0F0F0, 0xA0A0A0, L"D", true},
    {ButtonFrame::PressedHot, ButtonLayout::PressedHot, 0xE0B050, 0x704010, L"PH", false},
};

clArea Whole(std::int32_t inset) {
    return {inset, inset, anchor::beforeEnd | inset, anchor::beforeEnd | inset};
}

void AddLetter(clText& layout, const wchar_t* letter, COLORREF colour) {
    clTextString text;
    text.at = {anchor::centred, anchor::centred};
    text.text.Assign(letter);
    text.size = 18;
    text.bold = true;
    text.colour = colour;
    layout.AddText(text);
}

// What a frame is painted for.
enum class PaintAs { Whole, Picture, Mask };

// A mask is black where the frame covers what is behind it, and white elsewhere,
// where the picture is black.
void FillFrame(clText& layout, const FrameLook& look, PaintAs as) {
    const bool isMask = as == PaintAs::Mask;
    const COLORREF paper = as == PaintAs::Whole ? GetSysColor(COLOR_BTNFACE)
                           : isMask             ? white
                                                : black;
    layout.AddFill({{0, 0, anchor::end, anchor::end}, paper});
    const COLORREF edge = isMask ? black : look.edge;
    if (look.isOverlay && as != PaintAs::Whole) {
        layout.AddFrame({Whole(4), edge});
        layout.AddFrame({Whole(5), edge});
        return;
    }
    clTextBox box;
    box.area = Whole(1);
    box.brushColour = isMask ? black : look.face;
    box.penColour = edge;
    box.cornerRadius = 10;
    layout.AddBox(box);
    AddLetter(layout, look.letter, edge);
}

void PaintFrame(const XMemBitmap& image, const FrameLook& look, std::int32_t x, std::int32_t y,
                PaintAs as) {
    clText layout;
    FillFrame(layout, look, as);
    layout.width = frameWidth;
    layout.height = frameHeight;
    layout.dirty = false;
    layout.Paint(image.Context(), x, y);
}

}  // namespace

void DrawStrip(XMemBitmap& image, std::uint32_t style) {
    const bool hasMask = (style & button_style::mask) != 0;
    const std::int32_t frames = MeasureStrip(style, 1, 1).frames;
    image.CreateEmpty(nullptr, frames * frameWidth, frameHeight * (hasMask ? 2 : 1));
    for (const FrameLook& look : looks) {
        const std::int32_t index = FrameIndex(style, look.frame);
        if (index < 0) continue;
        const std::int32_t x = index * frameWidth;
        PaintFrame(image, look, x, 0, hasMask ? PaintAs::Picture : PaintAs::Whole);
        if (hasMask) PaintFrame(image, look, x, frameHeight, PaintAs::Mask);
    }
}

void FillTextButton(XButton& button, const XMemBitmap* behind) {
    button.SetTextSize(frameWidth, frameHeight, behind);
    for (const FrameLook& look : looks) {
        clText layout;
        const bool isFocus = look.layout == ButtonLayout::FocusOverlay;
        if (!isFocus) layout.AddFill({{0, 0, anchor::end, anchor::end}, look.face});
        layout.AddFrame({Whole(isFocus ? 4 : 0), look.edge});
        AddLetter(layout, look.letter, look.edge);
        button.SetLayout(look.layout, layout);
    }
}

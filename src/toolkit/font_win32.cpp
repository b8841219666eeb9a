#include <windows.h>

#include <algorithm>
#include <cstring>
#include <utility>
#include <vector>

#include "foundation/arrays.h"
#include "toolkit/fit_text.h"
#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/tab_stops.h"

namespace {

constexpr std::size_t faceLimit = LF_FACESIZE;
constexpr LONG boldWeight = 700;
constexpr LONG plainWeight = 400;

bool IsUsableFace(const char* face) {
    return face != nullptr && *face != '\0' && std::strlen(face) < faceLimit;
}

SIZE TextExtent(HDC context, const wchar_t* text, std::int32_t length) {
    SIZE extent = {};
    GetTextExtentPoint32W(context, text, length, &extent);
    return extent;
}

std::int32_t AverageCharacterWidth(HDC context) {
    constexpr wchar_t sample[] = L"abcdefABCDEF";
    constexpr std::int32_t length = 12;
    return TextExtent(context, sample, length).cx / length;
}

std::int32_t DesktopWidth() {
    RECT desktop = {};
    GetClientRect(GetDesktopWindow(), &desktop);
    return desktop.right;
}

// The stops with which `text` measures; none, which means the default ones, where
// they make no difference.
std::vector<std::int32_t> StopsFor(HDC context, const clString& text, std::int32_t startX) {
    if (startX == 0 || text.FindChar(L'\t') == 0) return {};
    return TabStops(startX, AverageCharacterWidth(context), DesktopWidth());
}

std::int32_t MeasureIn(HDC context, const clString& text, bool multiLine, std::int32_t startX) {
    if (!multiLine) return TextExtent(context, text.Chars(), text.Length()).cx;
    clStringList lines;
    lines.SplitLines(text);
    const std::vector<std::int32_t> stops = StopsFor(context, text, startX);
    static_assert(sizeof(INT) == sizeof(std::int32_t));
    const auto* positions = stops.empty() ? nullptr : reinterpret_cast<const INT*>(stops.data());
    std::int32_t widest = 0;
    for (std::int64_t i = 0; i < lines.Count(); ++i) {
        const clString& line = *lines.At(i);
        const DWORD extent = GetTabbedTextExtentW(context, line.Chars(), line.Length(),
                                                  static_cast<INT>(stops.size()), positions);
        widest = std::max<std::int32_t>(widest, LOWORD(extent));
    }
    return widest;
}

std::int64_t LineCount(const clString& text) {
    clStringList lines;
    lines.SplitLines(text);
    return lines.Count();
}

}  // namespace

void clFont::Create(HDC dc, const char* face, std::int32_t size, COLORREF textColour, bool bold,
                    bool italic, bool underline) {
    Release();
    transparent = 1;
    lineSpacing = 0;
    colour = textColour;
    description = {};
    description.lfHeight = size;  // positive: of the character cell
    description.lfWeight = bold ? boldWeight : plainWeight;
    description.lfItalic = italic ? 1 : 0;
    description.lfUnderline = underline ? 1 : 0;
    const clString name(IsUsableFace(face) ? face : defaultFace);
    std::copy_n(name.Chars(), name.Length() + 1, description.lfFaceName);
    font = CreateFontIndirectW(&description);
    Select(dc);
}

void clFont::Select(HDC dc) {
    if (font == nullptr || dc == nullptr) return;
    Restore();
    previousFont = static_cast<HFONT>(SelectObject(dc, font));
    if (previousFont == nullptr) return;
    previousColour = SetTextColor(dc, colour);
    previousMode = SetBkMode(dc, transparent > 0 ? TRANSPARENT : OPAQUE);
    context = dc;
    selected = true;
}

void clFont::Restore() {
    if (!selected) return;
    SelectObject(context, previousFont);
    SetTextColor(context, previousColour);
    SetBkMode(context, previousMode);
    context = nullptr;
    previousFont = nullptr;
    selected = false;
}

void clFont::Release() {
    Restore();
    if (font != nullptr) DeleteObject(std::exchange(font, nullptr));
}

void clFont::DrawString(std::int32_t x, std::int32_t y, const clString& text, bool multiLine) {
    if (!selected) return;
    if (!multiLine) {
        const UINT options = transparent > 0 ? 0 : ETO_OPAQUE;
        ExtTextOutW(context, x, y, options, nullptr, text.Chars(), static_cast<UINT>(text.Length()),
                    nullptr);
        return;
    }
    clStringList lines;
    lines.SplitLines(text);
    const std::int32_t step = LineHeight() + lineSpacing;
    for (std::int64_t i = 0; i < lines.Count(); ++i, y += step) {
        const clString& line = *lines.At(i);
        TabbedTextOutW(context, x, y, line.Chars(), line.Length(), 0, nullptr, 0);
    }
}

std::int32_t clFont::TextWidth(HDC dc, const clString& text, bool multiLine,
                               std::int32_t startX) const {
    if (font == nullptr) return 0;
    if (dc == nullptr) return selected ? MeasureIn(context, text, multiLine, startX) : 0;
    const clSelection selection(dc, font);
    return MeasureIn(dc, text, multiLine, startX);
}

std::int32_t clFont::TextHeight(const clString& text, bool multiLine) const {
    if (!selected) return 0;
    const std::int64_t lines = multiLine ? LineCount(text) : 1;
    if (lines == 0) return 0;
    const std::int64_t height = TextExtent(context, L"Ay", 2).cy;
    return static_cast<std::int32_t>(height * lines + lineSpacing * (lines - 1));
}

std::int32_t clFont::LineHeight() const {
    return TextHeight(L"Ay");
}

bool clFont::FitWithEllipsis(std::int32_t maximumWidth, clString& text) const {
    if (!selected) return false;
    return FitText(text, maximumWidth,
                   [this](const clString& candidate) { return TextWidth(nullptr, candidate); });
}

// A font, the device context that it is selected into, and text written with it.
#pragma once

#include <windows.h>

#include <cstdint>

#include "foundation/string.h"

// The face of the whole toolkit, for which every other name that can't be used stands.
inline constexpr char defaultFace[] = "Tahoma";
// The size where none is given, in pixels.
inline constexpr std::int32_t defaultTextSize = 13;

// A multi-line text ends its lines with a CR and any line feeds right behind it;
// a line feed alone ends none, and an empty text has no lines. All widths and
// heights are pixels. Without a font handle every operation does nothing or
// gives 0. The thread of the device context.
class clFont {
public:
    clFont() = default;
    clFont(const clFont&) = delete;
    clFont& operator=(const clFont&) = delete;
    ~clFont() { Release(); }

    // Makes the font in place of an earlier one, with `transparent` 1 and no line
    // spacing, and selects it if there is a context. `face` is text in the ANSI
    // code page; null, an empty one and one of 32 characters or more are
    // "Tahoma". `size` is the height of a character cell.
    void Create(HDC dc, const char* face = nullptr, std::int32_t size = defaultTextSize,
                COLORREF textColour = 0, bool bold = false, bool italic = false,
                bool underline = false);
    // Selects the font into `dc` and sets colour and background mode, keeping what
    // they replace. An earlier context gets its own back first. Null does nothing.
    void Select(HDC dc);
    // Gives the context what `Select` replaced and deletes the font.
    void Release();

    // Nothing happens unless the font is selected. Tabs of a multi-line text
    // lead to multiples of 8 average characters from the context's left edge.
    void DrawString(std::int32_t x, std::int32_t y, const clString& text, bool multiLine = false);
    // Measures in `dc`, or if that is null in the context that the font is
    // selected into; without either 0. The widest line counts, with tabs that line
    // up as they do when drawn at `startX`; 0 measures as if drawn at 0.
    std::int32_t TextWidth(HDC dc, const clString& text, bool multiLine = false,
                           std::int32_t startX = 0) const;
    // Every line counts with the height of "Ay", with line spacing between lines
    // but not behind the last. 0 unless the font is selected.
    std::int32_t TextHeight(const clString& text, bool multiLine = false) const;
    std::int32_t LineHeight() const;
    // Shortens `text`, read as one line, with "..." until it is narrower than
    // `maximumWidth`, as FitText does; true if it did. Nothing happens unless the
    // font is selected.
    bool FitWithEllipsis(std::int32_t maximumWidth, clString& text) const;

    // Still owned here; null if none was made.
    HFONT Handle() const { return font; }
    // What the font was made from.
    const LOGFONTW& Description() const { return description; }
    bool IsSelected() const { return selected; }

private:
    bool selected = false;
    HDC context = nullptr;
    HFONT previousFont = nullptr;
    COLORREF previousColour = 0;
    std::int32_t previousMode = 0;

public:
    // Above 0 the background shows through, otherwise it is painted. `Select`
    // reads this and the colour.
    std::int32_t transparent = 1;

private:
    HFONT font = nullptr;
    LOGFONTW description = {};

public:
    COLORREF colour = 0;
    std::int32_t lineSpacing = 0;  // extra pixels between the lines

private:
    void Restore();
};

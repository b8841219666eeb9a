#include "tests/toolkit/button_form.h"

#include <algorithm>

#include "tests/ui/pointer.h"
#include "tests/ui/pump.h"

namespace {

constexpr UINT timerPeriodMs = 50;

// Palette indices of the strip.
enum Index : std::uint8_t { black, white, normal, pressed, hot, focus, disabled, pressedHot };
constexpr COLORREF palette[] = {RGB(0, 0, 0),    RGB(255, 255, 255), strip::normal,
                                strip::pressed,  strip::hot,         strip::focus,
                                strip::disabled, strip::pressedHot};

struct FrameKind {
    Index colour;
    std::uint32_t bit;
    int firstRow;  // that it covers
    int lastRow;
};

constexpr int bottomRow = strip::frameHeight - 1;
constexpr FrameKind frameKinds[] = {
    {normal, 0, 0, bottomRow},
    {pressed, 0, 0, bottomRow},
    {hot, button_style::hotFrame, 0, bottomRow},
    {focus, button_style::focusFrame, 0, 1},
    {disabled, button_style::disabledFrame, bottomRow - 1, bottomRow},
    {pressedHot, button_style::pressedHotFrame, 0, bottomRow},
};

// A bitmap of 8 bits a pixel, top row first.
class PaletteBitmap {
public:
    PaletteBitmap(int width, int height) : stride((width + 3) / 4 * 4) {
        struct {
            BITMAPINFOHEADER header = {};
            RGBQUAD colours[256] = {};
        } description;
        description.header.biSize = sizeof(description.header);
        description.header.biWidth = width;
        description.header.biHeight = -height;
        description.header.biPlanes = 1;
        description.header.biBitCount = 8;
        for (std::size_t i = 0; i < std::size(palette); ++i) {
            description.colours[i] = {GetBValue(palette[i]), GetGValue(palette[i]),
                                      GetRValue(palette[i]), 0};
        }
        void* memory = nullptr;
        bitmap = CreateDIBSection(nullptr, reinterpret_cast<const BITMAPINFO*>(&description),
                                  DIB_RGB_COLORS, &memory, nullptr, 0);
        bits = static_cast<std::uint8_t*>(memory);
    }
    PaletteBitmap(const PaletteBitmap&) = delete;
    PaletteBitmap& operator=(const PaletteBitmap&) = delete;
    ~PaletteBitmap() { DeleteObject(bitmap); }

    void Set(int x, int y, Index colour) { bits[y * stride + x] = colour; }
    HBITMAP Get() const { return bitmap; }

private:
    int stride;
    std::uint8_t* bits = nullptr;
    HBITMAP bitmap = nullptr;
};

void DrawFrame(PaletteBitmap& target, int left, const FrameKind& kind, bool hasMask) {
    for (int y = 0; y < strip::frameHeight; ++y) {
        for (int x = 0; x < strip::frameWidth; ++x) {
            const bool covers =
                !hasMask || (x < strip::frameWidth / 2 && y >= kind.firstRow && y <= kind.lastRow);
            target.Set(left + x, y, covers ? kind.colour : black);
            if (hasMask) target.Set(left + x, y + strip::frameHeight, covers ? black : white);
        }
    }
}

}  // namespace

void LoadStrip(XMemBitmap& image, std::uint32_t style) {
    if (style == 0) style = button_style::byDefault;
    const bool hasMask = (style & button_style::mask) != 0;
    const int frames = MeasureStrip(style, 1, 1).frames;
    PaletteBitmap drawn(frames * strip::frameWidth, strip::frameHeight * (hasMask ? 2 : 1));
    int left = 0;
    for (const FrameKind& kind : frameKinds) {
        if (kind.bit != 0 && (style & kind.bit) == 0) continue;
        DrawFrame(drawn, left, kind, hasMask);
        left += strip::frameWidth;
    }
    image.CopyFromBitmap(drawn.Get());
}

COLORREF Shown(const XButton& button, POINT where) {
    return PixelOf(button.Window(), where.x, where.y);
}

void ProbeButton::Note(const char* what, std::uint32_t which) {
    const std::string call = std::string(what) + " " + std::to_string(which);
    if (call.starts_with("repeat")) {
        repeats.push_back(which);
    } else {
        calls.push_back(call);
    }
    if (meanwhile) meanwhile(call);
}

ButtonForm::ButtonForm(const std::vector<ButtonWish>& wishes, Timer timer) {
    form.route = [this](HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) {
        if (message == WM_COMMAND && lParam == 0) commands.push_back(LOWORD(wParam));
        return bar.Route(window, message, wParam, lParam, handled);
    };
    form.created = [&] {
        timerId = NewBarTimerId();
        bar.SetForm(form.Window(), timerId);
        for (const ButtonWish& wish : wishes)
            MakeButton(wish);
        if (timer == Timer::Running) SetTimer(form.Window(), timerId, timerPeriodMs, nullptr);
    };
    DialogTemplate dialog(visibleForm, 250, 120);
    dialog.Add({L"EDIT", WS_VISIBLE | WS_TABSTOP | WS_BORDER, 5, 5, 60, 14, editId});
    dialog.Add({L"BUTTON", WS_VISIBLE | WS_TABSTOP | BS_DEFPUSHBUTTON, 5, 95, 50, 14, IDOK, L"OK"});
    form.Show(dialog);
    PointAway();
}

ButtonForm::~ButtonForm() {
    bar.DestroyButtons();
}

void ButtonForm::MakeButton(const ButtonWish& wish) {
    auto button = std::make_unique<ProbeButton>();
    LoadStrip(button->Image(), wish.style);
    XButtonParams params;
    params.x = firstButton.x + static_cast<int>(buttons.size()) * buttonStep;
    params.y = firstButton.y;
    params.caption = L"Caption";
    params.tooltip = wish.tooltip;
    params.style = wish.style;
    params.background = wish.background;
    params.menuId = wish.menuId;
    params.menu = wish.menu;
    button->Create(form.Window(), params, &form);
    bar.AddButton(button.get());
    buttons.push_back(std::move(button));
}

void ButtonForm::MakeAgain(std::size_t index) {
    LoadStrip(At(index).Image(), 0);
    XButtonParams params;
    params.x = firstButton.x + static_cast<int>(index) * buttonStep;
    params.y = firstButton.y;
    At(index).Create(Window(), params, &form);
}

POINT ButtonForm::MiddleOf(std::size_t index) {
    return ScreenMiddle(At(index).Window());
}

void ButtonForm::PointAt(std::size_t index) {
    MovePointer(MiddleOf(index));
    PumpMessages();
}

void ButtonForm::PointAway() {
    MovePointer(ScreenPoint(Window(), 300, 20));
    PumpMessages();
}

LRESULT ButtonForm::Route(UINT message, WPARAM wParam, LPARAM lParam) {
    lastHandled = 0;
    return bar.Route(Window(), message, wParam, lParam, &lastHandled);
}

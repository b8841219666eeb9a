#include <array>

#include "resources/ids.h"
#include "toolkit/button.h"
#include "toolkit/button_bar.h"
#include "tools/gallery/button_strip.h"
#include "tools/gallery/page.h"

namespace {

struct ButtonLookWish {
    const wchar_t* label;
    std::uint32_t state;
    bool latched = false;
    bool disabled = false;
    bool focused = false;
};

constexpr ButtonLookWish wishes[] = {
    {L"normal", button_state::normal},
    {L"hot", button_state::hot},
    {L"pressed", button_state::pressed},
    {L"pressed, hot", button_state::pressedHot},
    {L"latched", button_state::normal, true},
    {L"latched, hot", button_state::hot, true},
    {L"latched, pressed", button_state::pressed, true},
    {L"disabled", button_state::normal, false, true},
    {L"focused", button_state::normal, false, false, true},
    {L"focused, hot", button_state::hot, false, false, true},
};

constexpr std::int32_t left = 16;
constexpr std::int32_t column = 96;

// Writes on the page what it was told.
class LiveButton : public XButton {
public:
    explicit LiveButton(HWND& line) : log(line) {}

    void OnClick(std::uint32_t which) override { Tell(L"clicked", which); }
    void OnPressed(std::uint32_t which) override { Tell(L"pressed", which); }
    void OnCancelled(std::uint32_t which) override { Tell(L"cancelled", which); }
    void OnRepeat(std::uint32_t) override {
        ++repeats;
        Tell(L"still pressed", button_which::left);
    }

private:
    void Tell(const wchar_t* what, std::uint32_t which) {
        clString text;
        text.Format(L"%s: %s with the %s button; %d ticks while pressed", Caption().Chars(), what,
                    which == button_which::left ? L"left" : L"right", repeats);
        SetWindowTextW(log, text.Chars());
    }
    clString Caption() const {
        wchar_t caption[50] = {};
        GetWindowTextW(Window(), caption, 50);
        return clString(caption);
    }

    HWND& log;
    int repeats = 0;
};

class ButtonPage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Buttons"; }
    void OnDestroy() override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

protected:
    void Fill() override;

private:
    using Prepare = void (*)(XButton& button);

    void AddRow(std::int32_t y, const wchar_t* heading, std::uint32_t style, Prepare prepare);
    void AddLook(std::int32_t x, std::int32_t y, std::uint32_t style, const ButtonLookWish& wish,
                 Prepare prepare);
    void AddLiveButtons(std::int32_t y);
    void AddLive(std::size_t index, std::uint32_t strip, const wchar_t* caption,
                 std::uint16_t menuId);

    XMemBitmap backdrop;
    XButtonBar bar;
    std::uint64_t timer = 0;
    HWND log = nullptr;
    std::array<LiveButton, 6> live = {LiveButton(log), LiveButton(log), LiveButton(log),
                                      LiveButton(log), LiveButton(log), LiveButton(log)};
    std::int32_t liveTop = 0;
};

void ButtonPage::Fill() {
    backdrop.CreateEmpty(nullptr, 1000, 740);
    backdrop.FillColour(GetSysColor(COLOR_BTNFACE));
    AddRow(10, L"A strip of the program: mask, hot and focus frame (style 135)", 0,
           [](XButton& button) { button.Image().LoadResource(IDB_CONVERT); });
    AddRow(120, L"A strip with all six frames over a mask: the disabled frame is laid over",
           button_style::mask | strip_style::allFrames, [](XButton& button) {
               DrawStrip(button.Image(), button_style::mask | strip_style::allFrames);
           });
    AddRow(230, L"All six frames without a mask: no overlays, so no focus frame",
           strip_style::allFrames,
           [](XButton& button) { DrawStrip(button.Image(), strip_style::allFrames); });
    AddRow(340, L"Two frames alone, without a mask", strip_style::plain,
           [](XButton& button) { DrawStrip(button.Image(), strip_style::plain); });
    AddRow(450, L"Text mode: six layouts in place of a strip", strip_style::allFrames,
           [](XButton& button) { button.SetTextMode(true); });
    AddLiveButtons(560);
}

void ButtonPage::AddRow(std::int32_t y, const wchar_t* heading, std::uint32_t style,
                        Prepare prepare) {
    AddHeading(left, y, heading);
    std::int32_t x = left;
    for (const ButtonLookWish& wish : wishes) {
        AddLook(x, y + 24, style, wish, prepare);
        AddLabel(x, y + 78, wish.label);
        x += column;
    }
}

// A button that lives only until its look is caught.
void ButtonPage::AddLook(std::int32_t x, std::int32_t y, std::uint32_t style,
                         const ButtonLookWish& wish, Prepare prepare) {
    XButton button;
    prepare(button);
    XButtonParams params;
    params.x = x;
    params.y = y;
    params.style = style;
    params.background = &backdrop;
    button.Create(Window(), params, this);
    if (button.Image().Width() == 0) FillTextButton(button, &backdrop);
    EnableWindow(button.Window(), wish.disabled ? FALSE : TRUE);
    if (wish.focused) {
        // Focus looks show once Tab was used.
        SendMessageW(button.Window(), WM_KEYUP, VK_TAB, 0);
        SetFocus(button.Window());
    }
    button.SetLatched(wish.latched);
    RECT size{};
    GetClientRect(button.Window(), &size);
    XMemBitmap still;
    still.CreateEmpty(nullptr, size.right, size.bottom);
    button.Paint(still.Context(), wish.state, true);
    AddStill(x, y, still);
}

void ButtonPage::AddLiveButtons(std::int32_t y) {
    AddHeading(left, y, L"Alive, with the mouse's and the keyboard's help");
    liveTop = y + 24;
    timer = NewBarTimerId();
    bar.SetForm(Window(), timer);
    SetTimer(Window(), timer, 50, nullptr);
    AddLive(0, IDB_CONVERT, L"plain", 0);
    AddLive(1, IDB_LIST, L"partner", 0);
    AddLive(2, IDB_REFRESH, L"partner", 0);
    AddLive(3, IDB_RESET, L"menu", IDM_ROWS);
    AddLive(4, IDB_FILTER, L"latched", 0);
    AddLive(5, IDB_HELP, L"disabled", 0);
    live[1].SetPartner(&live[2]);
    live[4].SetLatched(true);
    EnableWindow(live[5].Window(), FALSE);
    log = AddControl(L"STATIC", L"What a button is told shows here.", 0,
                     {left, liveTop + 76, 700, liveTop + 94});
}

void ButtonPage::AddLive(std::size_t index, std::uint32_t strip, const wchar_t* caption,
                         std::uint16_t menuId) {
    XButtonParams params;
    params.x = left + static_cast<std::int32_t>(index) * column;
    params.y = liveTop;
    params.caption = caption;
    params.tooltip = caption;
    params.background = &backdrop;
    params.menuId = menuId;
    live[index].Image().LoadResource(strip);
    live[index].Create(Window(), params, this);
    bar.AddButton(&live[index]);
    AddLabel(params.x, liveTop + 54, caption);
}

void ButtonPage::OnDestroy() {
    bar.DestroyButtons();
}

LRESULT ButtonPage::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                std::uint32_t* handled) {
    return bar.Route(window, message, wParam, lParam, handled);
}

}  // namespace

std::unique_ptr<GalleryPage> MakeButtonPage() {
    return std::make_unique<ButtonPage>();
}

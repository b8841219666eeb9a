#include <array>

#include "resources/ids.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/icon_resource.h"
#include "toolkit/tool_tip.h"
#include "tools/gallery/page.h"

namespace {

// Lowest pixel of the tips of a row; a point tip stands above its point.
constexpr std::int32_t firstRow = 110;
constexpr std::int32_t secondRow = 240;
constexpr std::uint32_t fadingMs = 6000;

class TipPage : public GalleryPage {
public:
    const wchar_t* Name() const override { return L"Tooltips"; }
    void Enter() override;
    void Leave() override;
    void OnTimer(std::uint32_t id, std::int64_t userValue) override;

protected:
    void Fill() override;

private:
    clPoint OnScreen(std::int32_t x, std::int32_t y) const;
    void ShowPlain(std::size_t index, std::int32_t x, std::int32_t y, const wchar_t* text,
                   HICON icon, std::uint32_t showTime);
    void ShowRegions(std::size_t index, std::int32_t x, std::int32_t y, std::int64_t mode);

    std::array<XToolTip, 6> tips;
    XToolTip anchored;
    XToolTip around;
    HWND alpha = nullptr;
};

void TipPage::Fill() {
    AddHeading(16, 10, L"Tips at a point, for ever");
    AddLabel(16, firstRow + 4, L"one line");
    AddLabel(180, firstRow + 4, L"with an icon");
    AddLabel(360, firstRow + 4, L"two lines with an icon");
    AddHeading(16, firstRow + 40,
               L"Tips with regions: a link, and an icon that lights up and is pressed");
    AddLabel(16, secondRow + 24, L"plain");
    AddLabel(360, secondRow + 24, L"mode 1: a frame and larger margins");
    AddHeading(16, secondRow + 60, L"Fading");
    AddLabel(16, secondRow + 150, L"six seconds, of which the last two fade; then it begins again");
    alpha = AddControl(L"STATIC", L"", 0, {16, secondRow + 170, 400, secondRow + 188});
    AddHeading(16, secondRow + 220, L"Tips that wait for the pointer");
    HWND const anchor = AddControl(L"STATIC", L"Rest the pointer here: a tip for ten seconds",
                                   SS_CENTER | SS_CENTERIMAGE | WS_BORDER,
                                   {16, secondRow + 250, 300, secondRow + 290});
    AddControl(L"STATIC", L"or here: the tip of a rectangle, without fading",
               SS_CENTER | SS_CENTERIMAGE | WS_BORDER,
               {330, secondRow + 250, 620, secondRow + 290});
    XToolTipParams params;
    params.anchorWindow = anchor;
    params.text = L"Shown after a second, for ten; the last 2.5 fade";
    anchored.AddTool(params);
    params = {};
    params.rectangle = {330, secondRow + 250, 620, secondRow + 290};
    params.rectangleWindow = Window();
    params.text = L"The tip of a rectangle";
    params.noFade = true;
    around.AddTool(params);
    AddTimer(0);
}

clPoint TipPage::OnScreen(std::int32_t x, std::int32_t y) const {
    POINT point = {x, y};
    ClientToScreen(Window(), &point);
    return {point.x, point.y};
}

void TipPage::ShowPlain(std::size_t index, std::int32_t x, std::int32_t y, const wchar_t* text,
                        HICON icon, std::uint32_t showTime) {
    XToolTipParams params;
    params.point = OnScreen(x, y);
    params.text = text;
    params.icon = icon;
    params.showTime = showTime;
    tips[index].AddTool(params);
}

void TipPage::ShowRegions(std::size_t index, std::int32_t x, std::int32_t y, std::int64_t mode) {
    clText layout;
    clTextGradient gradient;
    gradient.area = {0, 0, anchor::end, anchor::end};
    gradient.colours = {0xFFFEFE, 0xFFFEFE, 0xF0E5E4, 0xF0E5E4};
    layout.AddGradient(gradient);
    clTextString text;
    text.at = {8, 6};
    text.text.Assign(L"A text of the layout, above");
    layout.AddText(text);
    clOwnedList<clRegion> regions;
    auto link = std::make_unique<clRegion>();
    link->x = 8;
    link->y = 26;
    link->text.Assign(L"a link in its default looks");
    link->callback = [](std::int64_t) { MessageBeep(0); };
    regions.Add(std::move(link));
    auto icon = std::make_unique<clRegion>();
    icon->x = 200;
    icon->y = 26;
    icon->normalIcon = LoadIconResource(IDI_STATE_NONE).Release();
    icon->hotIcon = LoadIconResource(IDI_STATE_FOLDER_ONLY).Release();
    icon->pressedIcon = LoadIconResource(IDI_STATE_RECURSIVE).Release();
    icon->callback = [](std::int64_t) { MessageBeep(0); };
    regions.Add(std::move(icon));
    XToolTipDescription description;
    description.mode = mode;
    description.point = OnScreen(x, y);
    description.showTime = tip_timing::forEver;
    description.layout = &layout;
    description.regions = &regions;
    tips[index].Configure(description);
}

void TipPage::Enter() {
    GalleryPage::Enter();
    const clIconHandle icon = LoadIconResource(IDI_PROGRAM);
    ShowPlain(0, 16, firstRow, L"Convert Selected Files", nullptr, tip_timing::forEver);
    ShowPlain(1, 180, firstRow, L"With an icon", icon.Get(), tip_timing::forEver);
    ShowPlain(2, 360, firstRow, L"Two lines\rbeside an icon", icon.Get(), tip_timing::forEver);
    ShowRegions(3, 16, secondRow + 20, 0);
    ShowRegions(4, 360, secondRow + 20, 1);
    ShowPlain(5, 16, secondRow + 140, L"Fades at the end of its time", nullptr, fadingMs);
}

void TipPage::Leave() {
    for (XToolTip& tip : tips)
        tip.Stop();
    GalleryPage::Leave();
}

void TipPage::OnTimer(std::uint32_t, std::int64_t) {
    if (IsWindowVisible(Window()) == FALSE) return;
    BYTE value = 0;
    HWND const shown = tips[5].ShownWindow();
    clString text(L"no alpha yet");
    if (shown == nullptr) {
        ShowPlain(5, 16, secondRow + 140, L"Fades at the end of its time", nullptr, fadingMs);
    } else if (GetLayeredWindowAttributes(shown, nullptr, &value, nullptr) != FALSE) {
        text.Format(L"alpha %d of 255", static_cast<int>(value));
    }
    SetWindowTextW(alpha, text.Chars());
}

}  // namespace

std::unique_ptr<GalleryPage> MakeTipPage() {
    return std::make_unique<TipPage>();
}

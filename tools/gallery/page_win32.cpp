#include "tools/gallery/ids.h"
#include "tools/gallery/page.h"

namespace {

constexpr std::int32_t sheetLayer = 1;
constexpr std::int32_t headingSize = 15;
constexpr COLORREF headingColour = 0x80500A;
constexpr COLORREF labelColour = 0x505050;

void AddSheetText(clText& sheet, std::int32_t x, std::int32_t y, const wchar_t* text,
                  bool isHeading) {
    clTextString record;
    record.at = {x, y};
    record.text.Assign(text);
    record.bold = isHeading;
    record.size = isHeading ? headingSize : 0;
    record.colour = isHeading ? headingColour : labelColour;
    sheet.AddText(record, sheetLayer);
}

}  // namespace

void GalleryPage::Open(HWND frame, const RECT& place) {
    CreateDialogParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_PAGE), frame,
                       &XWindow::DialogProcedure, reinterpret_cast<LPARAM>(this));
    MoveTo(place.left, place.top, place.right - place.left, place.bottom - place.top);
}

void GalleryPage::Enter() {
    ShowWindow(Window(), SW_SHOW);
}

void GalleryPage::Leave() {
    ShowWindow(Window(), SW_HIDE);
}

// All of it is painted in one copy.
void GalleryPage::OnEraseBackground(HDC) {}

void GalleryPage::OnPaint() {
    PAINTSTRUCT paint;
    HDC const dc = BeginPaint(Window(), &paint);
    RECT client{};
    GetClientRect(Window(), &client);
    XMemBitmap work;
    work.CreateEmpty(dc, client.right, client.bottom);
    work.FillColour(GetSysColor(COLOR_BTNFACE));
    sheet.Paint(work.Context(), 0, 0);
    work.Blit(dc, 0, 0);
    EndPaint(Window(), &paint);
}

void GalleryPage::AddHeading(std::int32_t x, std::int32_t y, const wchar_t* text) {
    AddSheetText(sheet, x, y, text, true);
}

void GalleryPage::AddLabel(std::int32_t x, std::int32_t y, const wchar_t* text) {
    AddSheetText(sheet, x, y, text, false);
}

void GalleryPage::AddStill(std::int32_t x, std::int32_t y, const XMemBitmap& picture) {
    clTextPicture record;
    record.at = {x, y};
    sheet.AddPicture(record, picture, sheetLayer);
}

HWND GalleryPage::AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style,
                             const RECT& place, std::uint16_t id) {
    HWND const control = CreateWindowExW(
        0, controlClass, text, WS_CHILD | WS_VISIBLE | style, place.left, place.top,
        place.right - place.left, place.bottom - place.top, Window(),
        reinterpret_cast<HMENU>(static_cast<UINT_PTR>(id)), GetModuleHandleW(nullptr), nullptr);
    const LRESULT font = SendMessageW(Window(), WM_GETFONT, 0, 0);
    SendMessageW(control, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
    return control;
}

std::vector<std::unique_ptr<GalleryPage>> MakePages() {
    std::vector<std::unique_ptr<GalleryPage>> pages;
    for (const auto make :
         {&MakeButtonPage, &MakeTreePage, &MakeListPage, &MakeValuePage, &MakeEditorPage,
          &MakeMenuPage, &MakeTipPage, &MakeTextPage, &MakeCoordinatePage}) {
        pages.push_back(make());
    }
    return pages;
}

#include "foundation/regional.h"
#include "mainwindow/main_form.h"
#include "mainwindow/status_text.h"
#include "resources/ids.h"
#include "toolkit/draw.h"
#include "toolkit/font.h"
#include "toolkit/gdi_handle.h"
#include "toolkit/icon_resource.h"

namespace {

constexpr std::int32_t bandHeight = 53;
constexpr std::int32_t panesTop = 55;  // and one vertical dialog unit
constexpr std::int32_t statusUnits = 16;
constexpr std::int32_t statusHeight = 20;  // of the strip that is painted anew
constexpr std::int32_t statusLeft = 4;
constexpr COLORREF bandLeft = 0xF0F0F0;
constexpr COLORREF bandRight = 0xFBFBFB;
constexpr COLORREF ruleColour = 0x808080;
constexpr COLORREF legendColour = 0x808080;
constexpr UINT moveOnly = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;

// Vertical dialog units as pixels of this window.
std::int32_t VerticalUnits(HWND window, std::int32_t units) {
    RECT mapped = {1, units, 1, 1};
    MapDialogRect(window, &mapped);
    return mapped.top;
}

SIZE ClientSize(HWND window) {
    RECT client = {};
    GetClientRect(window, &client);
    return {client.right, client.bottom};
}

struct LegendRow {
    std::int32_t textTop;
    const wchar_t* text;
    std::int32_t iconTop;
    int icon;
};

constexpr LegendRow legend[] = {
    {4, L"Convert Folder & Sub-Folders", 2, IDI_STATE_RECURSIVE},
    {20, L"Convert Folder, no Sub-Folders", 18, IDI_STATE_FOLDER_ONLY},
    {36, L"Contains Individual Conversion Files", 34, IDI_STATE_HAS_FILES},
};
constexpr std::int32_t legendKeyLeft = 270;
constexpr std::int32_t legendIconLeft = 301;
constexpr std::int32_t legendTextLeft = 320;

void PaintLegend(HDC dc) {
    clFont key;
    key.Create(dc);
    key.DrawString(legendKeyLeft, 4, L"Key: ");
    key.Release();
    clFont font;
    font.Create(dc, nullptr, defaultTextSize, legendColour);
    for (const LegendRow& row : legend) {
        font.DrawString(legendTextLeft, row.textTop, row.text);
        const clIconHandle icon = LoadIconResource(row.icon);
        DrawIconEx(dc, legendIconLeft, row.iconTop, icon.Get(), 16, 16, 0, nullptr, DI_NORMAL);
    }
}

}  // namespace

void frmMain::LayoutPanes(std::int32_t width, std::int32_t height) {
    const HWND window = XWindow::Window();
    const std::int32_t top = panesTop + VerticalUnits(window, 1);
    const std::int32_t paneHeight = height - VerticalUnits(window, statusUnits) - top;
    SetWindowPos(_TreeDrive.TreeWindow(), nullptr, 0, top, splitter.Position(), paneHeight,
                 moveOnly);
    SetWindowPos(_ListFiles.ListWindow(), nullptr, splitter.ListLeft(), top,
                 splitter.ListWidth(width), paneHeight, moveOnly);
}

void frmMain::OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t) {
    const HWND window = XWindow::Window();
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    LayoutPanes(static_cast<std::int32_t>(width), static_cast<std::int32_t>(height));
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window, nullptr, TRUE);
    handledFlag = 1;
}

// As large as the desktop, so that no size of the window needs another one.
void frmMain::BuildBackground() {
    _ScreenSize = ClientSize(GetDesktopWindow());
    if (_Background.Width() >= _ScreenSize.cx && _Background.Height() >= _ScreenSize.cy &&
        _Background.Bitmap() != nullptr) {
        return;
    }
    const HWND window = XWindow::Window();
    const HDC windowContext = GetDC(window);
    _Background.CreateEmpty(windowContext, _ScreenSize.cx, _ScreenSize.cy);
    ReleaseDC(window, windowContext);
    const HDC dc = _Background.Context();
    if (GetDeviceCaps(dc, BITSPIXEL) > 16) {
        DrawGradient(dc, {0, 0, _ScreenSize.cx, _ScreenSize.cy},
                     {bandLeft, bandRight, bandLeft, bandRight});
    } else {
        _Background.FillColour(bandLeft);
    }
    const clPenHandle pen(CreatePen(PS_SOLID, 1, ruleColour));
    const clSelection selected(dc, pen.Get());
    MoveToEx(dc, 0, bandHeight, nullptr);
    LineTo(dc, _ScreenSize.cx, bandHeight);
}

void frmMain::OnEraseBackground(HDC dc) {
    BuildBackground();
    _Background.Blit(dc, 0, 0);
    handledFlag = 1;
}

void frmMain::UpdateStatus() {
    if (statusHolds > 0) {
        statusIsStale = true;
        return;
    }
    const clMutexLock lock(SubclassMutex);
    _StatusText.Assign(L"");
    const XTreeItem node = SelectedItem();
    if (node.IsValid()) {
        ListTotals totals;
        for (std::int32_t row = 0; row < fileList.Count(); ++row) {
            const FileRow* record = fileList.RowAt(row);
            const std::uint64_t bytes = record != nullptr ? record->sizeBytes : 0;
            ++totals.shownFiles;
            totals.shownBytes += bytes;
            if (!fileList.IsTicked(row)) continue;
            ++totals.tickedFiles;
            totals.tickedBytes += bytes;
        }
        _StatusText.Assign(StatusText(totals, PathOfItem(node)));
    }
    const SIZE client = ClientSize(XWindow::Window());
    const RECT strip = {0, client.cy - statusHeight, client.cx, client.cy};
    InvalidateRect(XWindow::Window(), &strip, TRUE);
}

void frmMain::OnPaint() {
    const HWND window = XWindow::Window();
    PAINTSTRUCT paint = {};
    const HDC dc = BeginPaint(window, &paint);
    const SIZE client = ClientSize(window);
    const std::int32_t statusTop = client.cy - statusHeight;
    clFont font;
    font.Create(dc);
    font.DrawString(statusLeft, statusTop, _StatusText);
    noticeIsShown = fileList.Reader().IsReading();
    if (noticeIsShown) {
        const clString notice(L"Reading Meta Data...");
        font.DrawString(client.cx - font.TextWidth(nullptr, notice) - 16, statusTop, notice);
    }
    font.Release();
    PaintLegend(dc);
    EndPaint(window, &paint);
}

SplitterZone frmMain::GrabZone() const {
    const HWND window = XWindow::Window();
    return splitter.Zone(ClientSize(window).cy - VerticalUnits(window, statusUnits));
}

void frmMain::OnMouseMove(std::int32_t x, std::int32_t y, std::uint32_t) {
    if (splitter.IsDragging()) {
        splitter.Drag(x);
        const SIZE client = ClientSize(XWindow::Window());
        LayoutPanes(client.cx, client.cy);
    }
    const bool overDivider = splitter.IsDragging() || GrabZone().Has(x, y);
    SetCursor(LoadCursorW(nullptr, overDivider ? IDC_SIZEWE : IDC_ARROW));
    handledFlag = 1;
}

void frmMain::OnMouseDown(std::int32_t x, std::int32_t y, std::uint32_t message,
                          std::uint32_t keys) {
    OnMouseMove(x, y, keys);
    if (message == WM_LBUTTONDOWN && GrabZone().Has(x, y)) {
        SetCapture(XWindow::Window());
        splitter.Begin(x);
    }
    handledFlag = 1;
}

void frmMain::OnMouseUp(std::int32_t x, std::int32_t y, std::uint32_t, std::uint32_t keys) {
    OnMouseMove(x, y, keys);
    if (splitter.IsDragging()) {
        splitter.End();
        ReleaseCapture();
    }
    handledFlag = 1;
}

void frmMain::OnMove(std::int32_t, std::int32_t) {}

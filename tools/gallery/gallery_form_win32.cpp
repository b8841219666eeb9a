#include "tools/gallery/gallery_form.h"

// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include "tools/gallery/ids.h"
#include "tools/gallery/picture.h"

namespace {

constexpr std::int32_t clientWidth = 1000;
constexpr std::int32_t clientHeight = 760;
constexpr std::int32_t tabHeight = 26;
constexpr UINT writePicturesMessage = WM_APP;

void RunDialog(XWindow& form) {
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_GALLERY), nullptr,
                    &XWindow::DialogProcedure, reinterpret_cast<LPARAM>(&form));
}

// Until nothing comes any more for a while.
void PumpUntilQuiet() {
    constexpr DWORD quietMs = 200;
    MSG message;
    while (MsgWaitForMultipleObjects(0, nullptr, FALSE, quietMs, QS_ALLINPUT & ~QS_TIMER) !=
           WAIT_TIMEOUT) {
        while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
            TranslateMessage(&message);
            DispatchMessageW(&message);
        }
    }
}

}  // namespace

GalleryForm::~GalleryForm() = default;

void GalleryForm::Run() {
    RunDialog(*this);
}

bool GalleryForm::WritePictures(const clString& folder) {
    pictures.Assign(folder);
    RunDialog(*this);
    return arePicturesWritten;
}

void GalleryForm::OnCreate() {
    RECT frame = {0, 0, clientWidth, clientHeight};
    AdjustWindowRectEx(&frame, static_cast<DWORD>(GetWindowLongW(Window(), GWL_STYLE)), FALSE,
                       static_cast<DWORD>(GetWindowLongW(Window(), GWL_EXSTYLE)));
    MoveTo(keepCurrent, keepCurrent, frame.right - frame.left, frame.bottom - frame.top);
    CenterOnScreen();
    pages = MakePages();
    MakeTabs();
    ShowWindow(Window(), SW_SHOW);
    std::size_t first = 0;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        if (wanted.Equals(pages[i]->Name())) first = i;
    }
    Select(first);
    if (!pictures.IsEmpty()) PostMessageW(Window(), writePicturesMessage, 0, 0);
}

void GalleryForm::MakeTabs() {
    tabs = CreateWindowExW(0, WC_TABCONTROLW, L"", WS_CHILD | WS_VISIBLE | WS_TABSTOP, 0, 0,
                           clientWidth, tabHeight, Window(), nullptr, GetModuleHandleW(nullptr),
                           nullptr);
    SendMessageW(tabs, WM_SETFONT, static_cast<WPARAM>(SendMessageW(Window(), WM_GETFONT, 0, 0)),
                 FALSE);
    for (std::size_t i = 0; i < pages.size(); ++i) {
        TCITEMW item = {};
        item.mask = TCIF_TEXT;
        item.pszText = const_cast<wchar_t*>(pages[i]->Name());
        SendMessageW(tabs, TCM_INSERTITEMW, i, reinterpret_cast<LPARAM>(&item));
        pages[i]->Open(Window(), {0, tabHeight, clientWidth, clientHeight});
    }
}

void GalleryForm::Select(std::size_t page) {
    pages[current]->Leave();
    current = page;
    SendMessageW(tabs, TCM_SETCURSEL, page, 0);
    pages[current]->Enter();
}

void GalleryForm::OnClose() {
    EndDialog(Window(), 0);
}

// While their operations are still there to be called.
void GalleryForm::OnDestroy() {
    for (const auto& page : pages) {
        page->Leave();
        page->DestroyWnd();
    }
}

LRESULT GalleryForm::OnNotify(NMHDR* header) {
    if (header->hwndFrom == tabs && header->code == static_cast<UINT>(TCN_SELCHANGE)) {
        Select(static_cast<std::size_t>(SendMessageW(tabs, TCM_GETCURSEL, 0, 0)));
    }
    handledFlag = 0;
    return 0;
}

LRESULT GalleryForm::PreDispatch(HWND, UINT message, WPARAM, LPARAM, std::uint32_t* handled) {
    if (message != writePicturesMessage) return 0;
    for (std::size_t i = 0; i < pages.size(); ++i) {
        Select(i);
        PumpUntilQuiet();
        arePicturesWritten = WriteCurrent();
        if (!arePicturesWritten) break;
    }
    EndDialog(Window(), 0);
    *handled = 1;
    return 0;
}

bool GalleryForm::WriteCurrent() const {
    RECT place{};
    GetWindowRect(pages[current]->Window(), &place);
    XMemBitmap picture;
    CatchScreen(place, picture);
    clString path(pictures);
    path.Append(L"\\");
    path.Append(pages[current]->Name());
    path.Append(L".bmp");
    return WriteToFile(path, EncodeBmp(picture));
}

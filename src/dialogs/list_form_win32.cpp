#include "dialogs/list_form.h"

#include "foundation/program_title.h"
#include "foundation/settings.h"
#include "mainwindow/row_menu.h"
#include "mainwindow/setting_names.h"
#include "resources/ids.h"
#include "toolkit/font.h"

namespace {

constexpr UINT moveOnly = SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER;
constexpr std::int32_t headerHeight = 21;  // pixels below which a click is on the rows
constexpr INT_PTR resultCancelled = 0;
constexpr INT_PTR resultKept = 1;
constexpr INT_PTR resultConvert = 2;

// Dialog units as pixels: x of horizontal and y of vertical ones.
POINT Units(HWND window, std::int32_t horizontal, std::int32_t vertical) {
    RECT mapped = {horizontal, vertical, 1, 1};
    MapDialogRect(window, &mapped);
    return {mapped.left, mapped.top};
}

}  // namespace

frmList::frmList(HWND parent, const clStringList& files, PathList& filesExcluded,
                 const clString& defaultNames, bool* convert)
    : _ListFiles(*this),
      _Files(files),
      _FilesExcluded(filesExcluded),
      fileList(_ListFiles),
      summaryIsSettled(false),
      summaryIsInvalid(false) {
    fileList._ColumnNames.Assign(ReadSettingString(setting::listColumns));
    if (fileList._ColumnNames.IsEmpty()) fileList._ColumnNames.Assign(defaultNames);
    const INT_PTR result = DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_LIST),
                                           parent, &XWindow::DialogProcedure,
                                           reinterpret_cast<LPARAM>(static_cast<XWindow*>(this)));
    if (result == resultConvert) *convert = true;
}

void frmList::OnShow(std::uint32_t) {}

void frmList::OnClose() {
    EndDialog(Window(), resultCancelled);
    handledFlag = 1;
}

void frmList::OnIdCancel() {
    EndDialog(Window(), resultCancelled);
    handledFlag = 1;
}

void frmList::OnIdOk() {
    FinishList(resultKept);
    handledFlag = 1;
}

LRESULT frmList::PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                             std::uint32_t* handled) {
    LRESULT result = _ListFiles.Route(window, message, wParam, lParam, handled);
    if (*handled == 0) result = _RowMenu.Route(window, message, wParam, lParam, handled);
    if (*handled != 0) return result;
    if (message == WM_COMMAND && LOWORD(wParam) == IDC_CONVERT) FinishList(resultConvert);
    if (message == clFileList::WorkMessage()) {
        if (wParam == clFileList::Sort) fileList.SortList();
        if (wParam == clFileList::GoOnPumping) PumpMetaData();
    }
    return 0;
}

void frmList::OnDestroy() {
    fileList.Reader().StopReader();
    _ListFiles.Attach(nullptr);
    _ListFiles.SetListWindow(nullptr);
    handledFlag = 0;
}

void frmList::OnPaint() {
    PAINTSTRUCT paint = {};
    const HDC dc = BeginPaint(Window(), &paint);
    summaryIsInvalid = false;
    const POINT place = Units(Window(), 7, 5);
    clFont font;
    font.Create(dc);
    font.DrawString(place.x, place.y, _SummaryText);
    font.Release();
    EndPaint(Window(), &paint);
}

void frmList::MoveControl(int id, std::int32_t x, std::int32_t y) const {
    SetWindowPos(GetDlgItem(Window(), id), nullptr, x, y, 0, 0, moveOnly | SWP_NOSIZE);
}

void frmList::OnSize(std::uint32_t width, std::uint32_t height, std::uint32_t) {
    const HWND window = Window();
    SendMessageW(window, WM_SETREDRAW, FALSE, 0);
    const auto w = static_cast<std::int32_t>(width);
    const auto h = static_cast<std::int32_t>(height);
    const POINT corner = Units(window, 7, 17);
    // The margin of the width is measured in vertical units, as it has always been.
    SetWindowPos(_ListFiles.ListWindow(), nullptr, corner.x, corner.y, w - Units(window, 1, 14).y,
                 h - Units(window, 1, 42).y, moveOnly);
    const std::int32_t buttonsTop = h - Units(window, 1, 19).y;
    MoveControl(IDOK, w / 2 - Units(window, 81, 1).x, buttonsTop);
    MoveControl(IDC_CONVERT, w / 2 - Units(window, 25, 1).x, buttonsTop);
    MoveControl(IDCANCEL, w / 2 + Units(window, 31, 1).x, buttonsTop);
    SendMessageW(window, WM_SETREDRAW, TRUE, 0);
    InvalidateRect(window, nullptr, TRUE);
    handledFlag = 1;
}

void frmList::_ListFilesView::OnRowChecked(std::int32_t row, bool checked) {
    const FileRow* record = owner.fileList.RowAt(row);
    if (record != nullptr) {
        const clMutexLock lock(MetaDataMutex);
        if (checked) {
            owner.summary.Add(*record);
        } else {
            owner.summary.Remove(*record);
        }
    }
    owner.UpdateSummary();
}

void frmList::_ListFilesView::OnColumnClick(std::int32_t column) {
    owner.fileList.ToggleSort(column);
}

void frmList::_ListFilesView::OnListContextMenu(std::uint32_t, std::uint32_t, HWND list) {
    POINT pointer = {};
    GetCursorPos(&pointer);
    ScreenToClient(list, &pointer);
    if (pointer.y < headerHeight) {
        ShowColumnMenu(owner.Window(), *this, owner.fileList, owner);
    } else {
        owner.TickRows(AskRowMenu(owner._RowMenu, owner.Window()));
    }
}

void frmList::_ListFilesView::OnDrawRow(const DRAWITEMSTRUCT& item) {
    owner.fileList.DrawRow(item);
}

void frmList::TickRows(int command) {
    if (command != ID_CHECK_ALL && command != ID_UNCHECK_ALL && command != ID_INVERT_SELECTION)
        return;
    // The list's many messages, and each row's counting, would take them from the
    // kernel. A reader that works waits meanwhile.
    const clMutexLock lock(SubclassMutex);
    const clMutexLock rowsLock(MetaDataMutex);
    const XListView::RedrawPause pause(_ListFiles);
    for (std::int32_t row = 0; row < fileList.Count(); ++row) {
        const bool ticked =
            command == ID_INVERT_SELECTION ? !fileList.IsTicked(row) : command == ID_CHECK_ALL;
        fileList.SetTicked(row, ticked);
    }
}

void frmList::FinishList(INT_PTR result) {
    const SavedColumns columns = fileList.DisplayedColumns();
    fileList._ColumnNames.Assign(columns.names);
    WriteSettingString(columns.names, setting::listColumns);
    WriteSettingString(columns.widths, setting::listColumnWidths);
    {
        // The list's many messages would each take the mutex from the kernel.
        const clMutexLock lock(SubclassMutex);
        for (std::int32_t row = 0; row < fileList.Count(); ++row) {
            const FileRow* record = fileList.RowAt(row);
            if (record != nullptr && !fileList.IsTicked(row)) _FilesExcluded.Add(record->path);
        }
    }
    EndDialog(Window(), result);
}

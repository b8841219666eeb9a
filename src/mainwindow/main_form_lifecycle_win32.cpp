#include "decoders/decoder_registry.h"
#include "foundation/folders.h"
#include "foundation/handle.h"
#include "foundation/settings.h"
#include "mainwindow/main_form.h"
#include "mainwindow/open_maximised.h"
#include "mainwindow/placement.h"
#include "mainwindow/row_menu.h"
#include "mainwindow/setting_names.h"
#include "mainwindow/window_title.h"
#include "resources/ids.h"
#include "toolkit/icon_resource.h"

namespace {

constexpr int treeItemHeight = 18;
constexpr DWORD listStyle =
    LVS_EX_CHECKBOXES | LVS_EX_HEADERDRAGDROP | LVS_EX_FULLROWSELECT | LVS_EX_LABELTIP;
static_assert(listStyle == 0x4034);

// The pictures of the states stand at their numbers; number 0 is never shown.
HIMAGELIST MakeStateImages() {
    const HIMAGELIST images = ImageList_Create(16, 16, ILC_COLOR24 | ILC_MASK, 0, 16);
    for (const int id : {IDI_STATE_NONE, IDI_STATE_NONE, IDI_STATE_CHILD_SELECTED,
                         IDI_STATE_HAS_FILES, IDI_STATE_RECURSIVE, IDI_STATE_FOLDER_ONLY}) {
        const clIconHandle icon = LoadIconResource(id);
        ImageList_ReplaceIcon(images, -1, icon.Get());
    }
    return images;
}

std::int32_t ReadPixels(const wchar_t* name) {
    return static_cast<std::int32_t>(ReadSettingDword(name));
}

}  // namespace

frmMain::frmMain()
    : _TreeDrive(*this),
      _StateImages(nullptr),
      _ListFiles(*this),
      fileList(_ListFiles),
      _cmdConvert(&frmMain::Convert),
      _cmdList(&frmMain::ShowConversionList),
      _cmdRefresh(&frmMain::RefreshAll),
      _cmdReset(&frmMain::ResetAll),
      _cmdFilter(&frmMain::ShowFilterDialog),
      audioFilter(_AudioTypes),
      _ScreenSize{},
      selection(*this),
      statusHolds(0),
      statusIsStale(false),
      noticeIsShown(false) {
    DialogBoxParamW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(IDD_MAIN), nullptr,
                    &XWindow::DialogProcedure,
                    reinterpret_cast<LPARAM>(static_cast<XWindow*>(this)));
}

frmMain::~frmMain() {
    if (_StateImages != nullptr) ImageList_Destroy(_StateImages);
}

void frmMain::OnCreate() {
    SetIcons(LoadIconResource(IDI_PROGRAM, 32).Release(), LoadIconResource(IDI_PROGRAM).Release());
    SetWindowTextW(XWindow::Window(), BuildWindowTitle(ModuleDirectory()).Chars());
    BuildBackground();
    MakeButtons();
    LoadAudioTypes(_AudioTypes);
    UpdateFilterButton();
    splitter.Restore(ReadPixels(setting::divider), _ScreenSize.cx);
    SetUpTree();
    SetUpList();
    PrepareRowMenu(_RowMenu);
    PlaceWindow();
    OpenStartFolder();
    AddTimer(0);
}

void frmMain::SetUpTree() {
    const HWND tree = GetDlgItem(XWindow::Window(), IDC_FOLDER_TREE);
    _StateImages = MakeStateImages();
    _TreeDrive.SetTreeWindow(tree);
    SendMessageW(tree, TVM_SETIMAGELIST, TVSIL_NORMAL,
                 reinterpret_cast<LPARAM>(SystemImageList(false)));
    SendMessageW(tree, TVM_SETIMAGELIST, TVSIL_STATE, reinterpret_cast<LPARAM>(_StateImages));
    SendMessageW(tree, TVM_SETITEMHEIGHT, treeItemHeight, 0);
    _FolderPaths.Clear();
    FillRoots();
}

void frmMain::SetUpList() {
    fileList._ColumnNames.Assign(ReadSettingString(setting::columns));
    if (fileList._ColumnNames.IsEmpty()) fileList._ColumnNames.Assign(defaultColumns);
    const HWND list = GetDlgItem(XWindow::Window(), IDC_FILE_LIST);
    _ListFiles.SetListWindow(list);
    _ListFiles.Attach(list);
    fileList.SetUp(listStyle);
    fileList.RestoreColumns(ReadSettingString(setting::columnWidths));
    fileList.SetColumnSortImage(0, 0);
}

void frmMain::PlaceWindow() {
    const HWND window = XWindow::Window();
    RECT desktop = {};
    GetWindowRect(GetDesktopWindow(), &desktop);
    const WindowPlace stored = {ReadPixels(setting::x), ReadPixels(setting::y),
                                ReadPixels(setting::width), ReadPixels(setting::height)};
    const WindowPlace place = PlaceOfWindow(
        stored,
        {desktop.left, desktop.top, desktop.right - desktop.left, desktop.bottom - desktop.top});
    MoveTo(place.x, place.y, place.width, place.height);
    if (ReadSettingDword(setting::notMaximised) == 0) {
        openMaximised.Show(window);
    } else {
        RECT client = {};
        GetClientRect(window, &client);
        OnSize(static_cast<std::uint32_t>(client.right), static_cast<std::uint32_t>(client.bottom),
               0);
    }
}

void frmMain::OnClose() {
    SaveSettings();
    EndDialog(XWindow::Window(), 0);
    handledFlag = 1;
}

void frmMain::DeletePlacement() {
    const clRegistryKey key(OpenSettingsKey(KEY_WRITE));
    if (!key.IsValid()) return;
    for (const wchar_t* name :
         {setting::x, setting::y, setting::width, setting::height, setting::notMaximised})
        RegDeleteValueW(key.Get(), name);
}

void frmMain::SaveSettings() {
    const HWND window = XWindow::Window();
    DeletePlacement();
    if (IsZoomed(window) == FALSE && IsIconic(window) == FALSE) {
        RECT frame = {};
        GetWindowRect(window, &frame);
        WriteSettingDword(static_cast<std::uint32_t>(frame.left), setting::x);
        WriteSettingDword(static_cast<std::uint32_t>(frame.top), setting::y);
        WriteSettingDword(static_cast<std::uint32_t>(frame.right - frame.left), setting::width);
        WriteSettingDword(static_cast<std::uint32_t>(frame.bottom - frame.top), setting::height);
        WriteSettingDword(1, setting::notMaximised);
    }
    WriteSettingDword(static_cast<std::uint32_t>(splitter.Position()), setting::divider);
    const SavedColumns columns = fileList.DisplayedColumns();
    fileList._ColumnNames.Assign(columns.names);
    WriteSettingString(columns.names, setting::columns);
    WriteSettingString(columns.widths, setting::columnWidths);
    clString exclusions;
    for (std::int64_t i = 0; i < _AudioTypes.Count(); ++i) {
        if (!_AudioTypes.At(i).excluded) continue;
        exclusions.Append(_AudioTypes.At(i).extension);
        exclusions.Append(L';');
    }
    WriteSettingString(exclusions, exclusionSettingName);
}

void frmMain::OnDestroy() {
    fileList.Reader().StopReader();
    _ListFiles.Attach(nullptr);
    _ListFiles.SetListWindow(nullptr);
    buttonBar.DestroyButtons();
    handledFlag = 0;
}

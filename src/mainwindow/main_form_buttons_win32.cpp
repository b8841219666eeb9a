#include "foundation/folders.h"
#include "mainwindow/main_form.h"
#include "resources/ids.h"
#include "selection/disk_walk.h"

namespace {

constexpr UINT barPeriod = 50;  // milliseconds
constexpr std::int32_t buttonTop = 2;

}  // namespace

void frmMain::FormButton::OnClick(std::uint32_t) {
    (static_cast<frmMain*>(Owner())->*action)();
}

void frmMain::_cmdHelpButton::OnClick(std::uint32_t) {
    clString page = ModuleDirectory();
    page.Append(L"Help\\zKR\\FileSelector.htm");
    ShellOpen(page);
}

void frmMain::AddFormButton(FormButton& button, std::uint32_t picture, std::int32_t x,
                            const wchar_t* caption, const wchar_t* tooltip) {
    XButtonParams params;
    params.x = x;
    params.y = buttonTop;
    params.caption = caption;
    params.tooltip = tooltip;
    params.background = &_Background;
    button.Image().LoadResource(picture);
    button.Create(XWindow::Window(), params, this);
    buttonBar.AddButton(&button);
}

void frmMain::MakeButtons() {
    const HWND window = XWindow::Window();
    const std::uint64_t timer = NewBarTimerId();
    buttonBar.SetForm(window, timer);
    SetTimer(window, timer, barPeriod, nullptr);
    AddFormButton(_cmdConvert, IDB_CONVERT, 4, L"Convert", L"Convert Selected Files");
    AddFormButton(_cmdList, IDB_LIST, 52, L"List", L"List Audio Files Converting");
    AddFormButton(_cmdRefresh, IDB_REFRESH, 100, L"Refresh",
                  L"Refreshes, Showing New Files or Folders");
    AddFormButton(_cmdReset, IDB_RESET, 148, L"Reset", L"Unselects all Folders & Files");
    AddFormButton(_cmdFilter, IDB_FILTER, 196, L"Filter", L"Remove Audio Types From Conversion");

    RECT place = {340, 1, 1, 1};
    MapDialogRect(window, &place);
    XButtonParams help;
    help.x = place.left;
    help.y = buttonTop;
    help.caption = L"Help";
    help.tooltip = L"Displays Help For Batch Converter";
    _cmdHelp.Image().LoadResource(IDB_HELP);
    _cmdHelp.Create(window, help, nullptr);
    buttonBar.AddButton(&_cmdHelp);
}

void frmMain::UpdateFilterButton() {
    bool filters = false;
    for (std::int64_t i = 0; i < _AudioTypes.Count() && !filters; ++i)
        filters = _AudioTypes.At(i).excluded;
    if (filters == _cmdFilter.IsLatched()) return;
    _cmdFilter.SetLatched(filters);
    _cmdFilter.Paint(nullptr, _cmdFilter.State(), true);
}

void frmMain::StopReader() {
    fileList.Reader().StopReader();
}

void frmMain::Gather(clStringList& files) {
    DiskWalk walk;
    GatherFiles(selection.Lists(), audioFilter, walk, files);
}

void frmMain::Convert() {
    ConvertSelected(*this);
}

void frmMain::RefreshAll() {
    RefreshDrives();
    RefreshTree();
}

void frmMain::ResetAll() {
    selection.ResetSelections();
}

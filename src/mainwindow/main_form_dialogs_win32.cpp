// The dialogs over the main window. Nothing else here knows of them.
#include "dialogs/filter_form.h"
#include "dialogs/list_form.h"
#include "foundation/program_title.h"
#include "mainwindow/main_form.h"

void frmMain::ShowConversionList() {
    StopReader();
    clStringList files;
    Gather(files);
    if (files.Count() == 0) {
        MessageBoxW(XWindow::Window(), L"No audio files selected for conversion", programTitle,
                    MB_OK | MB_ICONHAND);
        return;
    }
    bool convert = false;
    SelectionLists& lists = selection.Lists();
    {
        const frmList dialog(XWindow::Window(), files, lists._FilesExcluded, fileList._ColumnNames,
                             &convert);
    }
    // A file that was ticked by hand would pass in spite of its exclusion.
    lists._FilesExcluded.ForEach(
        [&lists](const clString& path) { lists._FilesIncluded.Remove(path); });
    if (convert) ConvertSelected(*this);
    ListSelectedFolder();
}

void frmMain::ShowFilterDialog() {
    { const frmFilter dialog(XWindow::Window(), _AudioTypes); }
    // Whatever was done: the remembered type may be left out now.
    audioFilter.ForgetLastAudioType();
    ListSelectedFolder();
    UpdateFilterButton();
}

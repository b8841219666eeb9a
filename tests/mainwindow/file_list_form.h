// A form with one list of files, as the program's dialogs have it.
#pragma once

#include <windows.h>
// commctrl.h needs windows.h before it.
#include <commctrl.h>

#include <string>
#include <vector>

#include "mainwindow/file_list.h"
#include "tests/ui/host_form.h"
#include "toolkit/list_view.h"

class FileListForm {
public:
    // Hidden: nothing is painted but what a test paints itself. Columns are the
    // CR-separated `names`, with the widths behind them.
    explicit FileListForm(const wchar_t* names = L"", const wchar_t* widths = L"");

    // In the order in which they may go.
    XListView view;
    HostForm form;
    clFileList files{view};

    HWND Control() const { return view.ListWindow(); }
    // Appends a row whose cells are these texts; its record can be changed.
    FileRow& AddRow(const wchar_t* path, const std::vector<const wchar_t*>& cells,
                    bool ticked = false);
    // The texts of the first column, from the first row to the last.
    std::vector<std::string> FirstCells() const;
    std::vector<std::string> Titles() const;
    // Of the headers, in the order of the columns.
    std::vector<std::int32_t> Images() const;
};

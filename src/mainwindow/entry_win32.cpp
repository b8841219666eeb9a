// The process from its start to its end.
#include <windows.h>
// The platform's other headers need windows.h before them.
#include <commctrl.h>
#include <objbase.h>

#include "foundation/settings.h"
#include "mainwindow/main_form.h"

namespace {

// Registers the window classes that the dialogs are made of, before the entry.
class CommonControls {
public:
    CommonControls() {
        const INITCOMMONCONTROLSEX all = {sizeof all, 0xFF};
        InitCommonControlsEx(&all);
    }
};
const CommonControls commonControls;

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    // A failure shows where a COM object is asked for, and counts as having none.
    static_cast<void>(CoInitialize(nullptr));
    InitSettings();
    {
        // Runs the window; the constructor returns when it has closed.
        const frmMain form;
    }
    CoUninitialize();
    return 0;
}

// Shows the toolkit's widgets in all their states:
//   gallery [PAGE]               opens on that page
//   gallery --pictures FOLDER    writes a picture of each page and ends; 1 if it can't
#include <windows.h>
// The platform's other headers need windows.h before them.
#include <commctrl.h>
#include <objbase.h>
#include <shellapi.h>

#include "tools/gallery/gallery_form.h"

namespace {

int RunGallery() {
    int count = 0;
    wchar_t** const arguments = CommandLineToArgvW(GetCommandLineW(), &count);
    if (arguments == nullptr) return 1;
    const clString first(count > 1 ? arguments[1] : L"");
    const clString second(count > 2 ? arguments[2] : L"");
    LocalFree(arguments);
    if (first.Equals(L"--pictures")) {
        GalleryForm form{clString()};
        return !second.IsEmpty() && form.WritePictures(second) ? 0 : 1;
    }
    GalleryForm form(first);
    form.Run();
    return 0;
}

}  // namespace

int WINAPI wWinMain(HINSTANCE, HINSTANCE, LPWSTR, int) {
    const INITCOMMONCONTROLSEX all = {sizeof all, 0xFF};
    InitCommonControlsEx(&all);
    // Pictures in encoded form show nothing without it.
    static_cast<void>(CoInitialize(nullptr));
    const int result = RunGallery();
    CoUninitialize();
    return result;
}

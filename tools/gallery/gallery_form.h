// The gallery's window: one tab for each page.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "foundation/string.h"
#include "toolkit/window.h"
#include "tools/gallery/page.h"

class GalleryForm : public XWindow {
public:
    // Opens on the page of that name, on the first one if there is none.
    explicit GalleryForm(const clString& firstPage) : wanted(firstPage) {}
    ~GalleryForm() override;

    // Runs the window until the user closes it.
    void Run();
    // Shows each page in turn, writes what the screen shows to FOLDER\NAME.bmp and
    // closes. False if a picture could not be written.
    [[nodiscard]] bool WritePictures(const clString& folder);

    void OnCreate() override;
    void OnClose() override;
    void OnDestroy() override;
    LRESULT OnNotify(NMHDR* header) override;
    LRESULT PreDispatch(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                        std::uint32_t* handled) override;

private:
    void MakeTabs();
    void Select(std::size_t page);
    bool WriteCurrent() const;

    clString wanted;
    clString pictures;  // their folder; empty for an ordinary run
    bool arePicturesWritten = false;
    std::vector<std::unique_ptr<GalleryPage>> pages;
    std::size_t current = 0;
    HWND tabs = nullptr;
};

// A page of the gallery: labels and stills on a sheet, and widgets that live.
#pragma once

#include <windows.h>

#include <cstdint>
#include <memory>
#include <vector>

#include "toolkit/mem_bitmap.h"
#include "toolkit/text.h"
#include "toolkit/window.h"

// A child dialog of the gallery's window. Pixels of its client area throughout.
class GalleryPage : public XWindow {
public:
    // The name of its tab, and of its picture's file.
    virtual const wchar_t* Name() const = 0;
    // Comes to the front, or leaves it. What needs the focus or the screen is done
    // in here; the base shows or hides the page.
    virtual void Enter();
    virtual void Leave();

    void Open(HWND frame, const RECT& place);

    void OnCreate() override { Fill(); }
    void OnEraseBackground(HDC dc) override;
    void OnPaint() override;

protected:
    // Makes what the page shows.
    virtual void Fill() = 0;

    void AddHeading(std::int32_t x, std::int32_t y, const wchar_t* text);
    void AddLabel(std::int32_t x, std::int32_t y, const wchar_t* text);
    // Copied.
    void AddStill(std::int32_t x, std::int32_t y, const XMemBitmap& picture);
    // A platform control with the dialog's font.
    HWND AddControl(const wchar_t* controlClass, const wchar_t* text, DWORD style,
                    const RECT& place, std::uint16_t id = 0);

    clText sheet;
};

// One of each, in the order of their tabs.
std::vector<std::unique_ptr<GalleryPage>> MakePages();

std::unique_ptr<GalleryPage> MakeButtonPage();
std::unique_ptr<GalleryPage> MakeTreePage();
std::unique_ptr<GalleryPage> MakeListPage();
std::unique_ptr<GalleryPage> MakeValuePage();
std::unique_ptr<GalleryPage> MakeEditorPage();
std::unique_ptr<GalleryPage> MakeMenuPage();
std::unique_ptr<GalleryPage> MakeTipPage();
std::unique_ptr<GalleryPage> MakeTextPage();
std::unique_ptr<GalleryPage> MakeCoordinatePage();

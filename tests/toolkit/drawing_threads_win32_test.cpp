#include <gtest/gtest.h>
#include <windows.h>

// These need windows.h before them.
#include <objbase.h>
#include <ocidl.h>
#include <olectl.h>

#include <atomic>
#include <cstdint>
#include <map>
#include <mutex>
#include <set>
#include <string>
#include <thread>

#include "tests/support/import_stub.h"
#include "tests/toolkit/button_form.h"
#include "tests/toolkit/tip_form.h"
#include "tests/ui/encoded_picture.h"
#include "tests/ui/pixels.h"
#include "tests/ui/pump.h"
#include "tests/ui/resource_counts.h"
#include "toolkit/text.h"
#include "toolkit/tool_tip.h"

namespace {

constexpr COLORREF red = RGB(200, 0, 0);
constexpr COLORREF green = RGB(0, 200, 0);
constexpr COLORREF paper = RGB(255, 255, 255);
constexpr POINT onPicture = {14, 14};
constexpr POINT onPaper = {4, 4};

// Watches the memory contexts of the process: which thread makes each one, and
// whether another one uses it. The platform takes a context away with its thread.
class ContextWatch {
public:
    ContextWatch()
        : make("CreateCompatibleDC", &Make),
          end("DeleteDC", &End),
          select("SelectObject", &Select),
          copy("BitBlt", &Copy) {
        const std::lock_guard lock(guard);
        owners.clear();
        threads.clear();
        strays.clear();
        realMake = make.Original<decltype(CreateCompatibleDC)>();
        realEnd = end.Original<decltype(DeleteDC)>();
        realSelect = select.Original<decltype(SelectObject)>();
        realCopy = copy.Original<decltype(BitBlt)>();
    }

    // What happened to a context on another thread than its own.
    static std::multiset<std::string> Strays() {
        const std::lock_guard lock(guard);
        return strays;
    }
    // Threads that have made a context.
    static std::size_t ThreadCount() {
        const std::lock_guard lock(guard);
        return threads.size();
    }
    // Contexts that were made since and are still there.
    static std::size_t LiveCount() {
        const std::lock_guard lock(guard);
        return owners.size();
    }

private:
    static void Note(HDC dc, const char* use) {
        const std::lock_guard lock(guard);
        const auto found = owners.find(dc);
        if (found != owners.end() && found->second != GetCurrentThreadId()) strays.insert(use);
    }
    static HDC WINAPI Make(HDC model) {
        const HDC made = realMake(model);
        const std::lock_guard lock(guard);
        if (made != nullptr) owners[made] = GetCurrentThreadId();
        threads.insert(GetCurrentThreadId());
        return made;
    }
    static BOOL WINAPI End(HDC dc) {
        Note(dc, "ended");
        {
            const std::lock_guard lock(guard);
            owners.erase(dc);
        }
        return realEnd(dc);
    }
    static HGDIOBJ WINAPI Select(HDC dc, HGDIOBJ object) {
        Note(dc, "selected into");
        return realSelect(dc, object);
    }
    static BOOL WINAPI Copy(HDC target, int x, int y, int width, int height, HDC source,
                            int sourceX, int sourceY, DWORD rasterOp) {
        Note(target, "copied to");
        Note(source, "copied from");
        return realCopy(target, x, y, width, height, source, sourceX, sourceY, rasterOp);
    }

    static inline std::mutex guard;
    static inline std::map<HDC, DWORD> owners;
    static inline std::set<DWORD> threads;
    static inline std::multiset<std::string> strays;
    static inline decltype(&CreateCompatibleDC) realMake = nullptr;
    static inline decltype(&DeleteDC) realEnd = nullptr;
    static inline decltype(&SelectObject) realSelect = nullptr;
    static inline decltype(&BitBlt) realCopy = nullptr;

    ImportStub make;
    ImportStub end;
    ImportStub select;
    ImportStub copy;
};

// A picture of 12 x 12 pixels in one colour, on paper, beside a gradient.
void FillLayout(clText& layout, COLORREF colour) {
    XMemBitmap picture;
    picture.CreateEmpty(nullptr, 12, 12);
    picture.FillColour(colour);
    layout.AddFill({.area = {0, 0, anchor::end, anchor::end}, .colour = paper});
    layout.AddGradient({.area = {30, 0, 40, 10}, .colours = {red, green, red, green}});
    layout.AddPicture({.at = {8, 8}}, picture);
}

void ShowPictureTip(XToolTip& tip, const clText& layout) {
    XToolTipDescription description;
    description.point = {700, 500};
    description.showTime = tip_timing::forEver;
    description.layout = &layout;
    tip.Configure(description);
    ASSERT_TRUE(tip.IsShowing());
    ASSERT_TRUE(
        PumpUntil([&tip] { return PixelOf(tip.ShownWindow(), onPicture.x, onPicture.y) == red; }));
    EXPECT_EQ(Colour{PixelOf(tip.ShownWindow(), onPaper.x, onPaper.y)}, Colour{paper});
}

void ShowPictureTip(XToolTip& tip) {
    clText layout;
    FillLayout(layout, red);
    ShowPictureTip(tip, layout);
}

TEST(DrawingThreads, TipWithAPictureIsDrawnThroughTheWatchersOwnContexts) {
    const TipForm form;
    const ContextWatch watch;
    XToolTip tip;
    ShowPictureTip(tip);
    InvalidateRect(tip.ShownWindow(), nullptr, TRUE);
    UpdateWindow(tip.ShownWindow());
    tip.Stop();
    EXPECT_EQ(ContextWatch::Strays(), std::multiset<std::string>{});
    EXPECT_EQ(ContextWatch::ThreadCount(), 2u) << "the layout's thread and the watcher";
    EXPECT_EQ(ContextWatch::LiveCount(), 0u);
}

decltype(&OleLoadPicture) realLoadPicture;
std::atomic<int> loadsWithCom{0};
std::atomic<int> loadsWithoutCom{0};

HRESULT WINAPI LoadAskingForCom(LPSTREAM stream, LONG size, BOOL keep, REFIID iid, LPVOID* made) {
    APTTYPE type = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    const bool hasCom = CoGetApartmentType(&type, &qualifier) == S_OK;
    ++(hasCom ? loadsWithCom : loadsWithoutCom);
    return realLoadPicture(stream, size, keep, iid, made);
}

// The loader must not rely on the thread that made the layout.
TEST(DrawingThreads, TipDecodesItsPictureOnAThreadWithCom) {
    const TipForm form;
    const ImportStub loader("OleLoadPicture", &LoadAskingForCom);
    realLoadPicture = loader.Original<decltype(OleLoadPicture)>();
    loadsWithCom = 0;
    loadsWithoutCom = 0;
    const auto encoded = EncodedBmp(12, 12, [](int, int) { return red; });
    clText layout;
    layout.AddFill({.area = {0, 0, anchor::end, anchor::end}, .colour = paper});
    layout.AddPicture({.at = {8, 8}}, encoded.data(), static_cast<std::int64_t>(encoded.size()));
    XToolTip tip;
    ShowPictureTip(tip, layout);
    tip.Stop();
    EXPECT_GE(loadsWithCom, 2) << "to be measured and to be painted";
    EXPECT_EQ(loadsWithoutCom, 0);
}

// A watcher that has ended may give back what is the platform's a little later.
ResourceCounts SettledCounts() {
    ResourceCounts counts = CountResources();
    EXPECT_TRUE(PumpUntil([&counts] {
        const ResourceCounts before = counts;
        counts = CountResources();
        return counts == before;
    }));
    return counts;
}

TEST(DrawingThreads, ShownTipsWithAPictureLeaveNothingBehind) {
    const TipForm form;
    const auto showAndDestroy = [](int count) {
        for (int i = 0; i < count; ++i) {
            XToolTip tip;
            ShowPictureTip(tip);
        }
    };
    showAndDestroy(3);
    const ResourceCounts before = SettledCounts();
    showAndDestroy(10);
    EXPECT_EQ(SettledCounts(), before);
}

TEST(DrawingThreads, LayoutThatAnotherThreadSetsIsDrawnThroughTheFormsOwnContexts) {
    const ButtonForm form({}, ButtonForm::Timer::None);
    const ContextWatch watch;
    XButton button;
    button.SetTextMode(true);
    button.Create(form.Window(), {}, nullptr);
    button.SetTextSize(60, 30, nullptr);
    // The second one puts an end to what was painted of the first.
    for (const COLORREF colour : {red, green}) {
        std::thread([&button, colour] {
            clText layout;
            FillLayout(layout, colour);
            button.SetLayout(ButtonLayout::Normal, layout);
        }).join();
        button.Paint(nullptr, button_state::normal, true);
        EXPECT_EQ(Colour{Shown(button, onPicture)}, Colour{colour});
        EXPECT_EQ(Colour{Shown(button, onPaper)}, Colour{paper});
    }
    button.Teardown();
    EXPECT_EQ(ContextWatch::Strays(), std::multiset<std::string>{});
    // The second thread may have the number of the first, which has ended.
    EXPECT_GE(ContextWatch::ThreadCount(), 2u) << "those that set a layout, and the form's";
    EXPECT_EQ(ContextWatch::LiveCount(), 0u);
}

}  // namespace

#include "tests/toolkit/painted_list.h"

// objbase.h needs windows.h before it.
#include <objbase.h>

namespace painted {

void Paint(clText& list, const Canvas& canvas) {
    list.minimumWidth = 100;
    list.minimumHeight = 40;
    list.dirty = true;
    list.Paint(canvas.Dc(), left, top);
}

void ExpectPaintedAs(clText& list, const std::function<void(HDC)>& draw) {
    const Canvas actual(width, height, paper);
    const Canvas expected(width, height, paper);
    Paint(list, actual);
    draw(expected.Dc());
    EXPECT_LT(expected.Count(paper), width * height) << "nothing was drawn";
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            ASSERT_EQ(Colour{actual.At(x, y)}, Colour{expected.At(x, y)}) << x << ", " << y;
    }
}

}  // namespace painted

PaintedList::PaintedList() {
    CoInitialize(nullptr);
}

PaintedList::~PaintedList() {
    CoUninitialize();
}

int FontCount::made;
const ImportStub* FontCount::current;

FontCount::FontCount() : stub("CreateFontIndirectW", Count) {
    made = 0;
    current = &stub;
}

HFONT WINAPI FontCount::Count(const LOGFONTW* description) {
    ++made;
    return current->Original<HFONT WINAPI(const LOGFONTW*)>()(description);
}

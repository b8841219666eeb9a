// Owners and scopes for what drawing needs.
#pragma once

#include <windows.h>

#include "foundation/handle.h"

template <class Object>
struct clGdiTraits {
    using Raw = Object;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { DeleteObject(raw); }
};

using clBrushHandle = clHandle<clGdiTraits<HBRUSH>>;
using clPenHandle = clHandle<clGdiTraits<HPEN>>;
using clBitmapHandle = clHandle<clGdiTraits<HBITMAP>>;
using clRegionHandle = clHandle<clGdiTraits<HRGN>>;

struct clIconTraits {
    using Raw = HICON;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { DestroyIcon(raw); }
};

using clIconHandle = clHandle<clIconTraits>;

// From CreateCompatibleDC.
struct clMemoryContextTraits {
    using Raw = HDC;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { DeleteDC(raw); }
};

using clMemoryContext = clHandle<clMemoryContextTraits>;

// The context of the whole screen, for as long as the object lives.
class clScreenContext {
public:
    clScreenContext() : context(GetDC(nullptr)) {}
    clScreenContext(const clScreenContext&) = delete;
    clScreenContext& operator=(const clScreenContext&) = delete;
    ~clScreenContext() { ReleaseDC(nullptr, context); }

    HDC Get() const { return context; }

private:
    HDC context;
};

// Selects an object into a context, and what was there before again at its end.
// Must end before the object and the context do.
class clSelection {
public:
    clSelection(HDC dc, HGDIOBJ object) : context(dc), previous(SelectObject(dc, object)) {}
    clSelection(const clSelection&) = delete;
    clSelection& operator=(const clSelection&) = delete;
    ~clSelection() {
        if (previous != nullptr) SelectObject(context, previous);
    }

private:
    HDC context;
    HGDIOBJ previous;
};

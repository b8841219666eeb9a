// The small pictures of a list's rows, each drawn once for each background.
#pragma once

#include <windows.h>

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <tuple>

#include "toolkit/mem_bitmap.h"

// Drawing an icon takes longer than painting all the rest of a row, and a list shows
// the same few in each. On the thread of the form.
class clRowPictures {
public:
    enum class Kind { TickBox, FileType };
    struct Key {
        Kind kind;
        int number;  // resource id of the tick box; index of the file type's image
        COLORREF background;

        bool operator<(const Key& other) const {
            return std::tie(kind, number, background) <
                   std::tie(other.kind, other.number, other.background);
        }
    };

    // Puts the picture of that key at (`x`, 0) of `target`, `size` pixels large.
    // `draw` draws it into a context that holds nothing but the background; it is
    // called once for a key, until `Clear`.
    void Paint(HDC target, std::int32_t x, const Key& key, const SIZE& size,
               const std::function<void(HDC)>& draw);
    void Clear() { pictures.clear(); }

private:
    std::map<Key, std::unique_ptr<XMemBitmap>> pictures;
};

#include "toolkit/fit_text.h"

namespace {

constexpr std::int32_t longestText = 3000;
constexpr wchar_t ellipsis[] = L"...";

clString Shortened(const clString& text, std::int32_t length) {
    clString shortened = text.Left(length);
    shortened.Append(ellipsis);
    return shortened;
}

}  // namespace

bool FitText(clString& text, std::int32_t maximumWidth, const TextMeasure& measure) {
    if (text.Length() > longestText) text.Assign(text.Left(longestText));
    if (text.IsEmpty() || measure(text) < maximumWidth) return false;
    // The longest beginning that fits lies between `fits` and `tooLong`. Halving
    // the stretch finds what taking one character after the other would, without
    // measuring a long text thousands of times for each paint.
    std::int32_t fits = 0;
    std::int32_t tooLong = text.Length();
    while (tooLong - fits > 1) {
        const std::int32_t middle = (fits + tooLong) / 2;
        if (measure(Shortened(text, middle)) < maximumWidth)
            fits = middle;
        else
            tooLong = middle;
    }
    text.Assign(fits == 0 ? clString() : Shortened(text, fits));
    return fits > 0;
}

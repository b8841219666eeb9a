// Shortens a text until it is narrow enough.
#pragma once

#include <cstdint>
#include <functional>

#include "foundation/string.h"

// The width of a text in pixels. A text must not be narrower than its beginning.
using TextMeasure = std::function<std::int32_t(const clString& text)>;

// Cuts `text` to 3000 characters, and then takes characters from its end until
// the rest with "..." behind it is narrower than `maximumWidth`. A text that is
// narrower as it stands, or empty, is left alone; one as wide as the maximum is
// shortened. True if "..." was appended; if not even one character fits, `text`
// comes out empty and the result is false.
bool FitText(clString& text, std::int32_t maximumWidth, const TextMeasure& measure);

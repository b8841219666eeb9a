// The small formatter behind clString::Format.
#pragma once

#include <cstdarg>

class clString;

// Formats without any bound on the length. Literal text is copied; a
// conversion is read as
//   width      decimal digits before any ".", from 0
//   precision  decimal digits behind a "."; 5 without one, "." alone means 0
//   letter     % d i u x X f s; any other character is skipped
// Numbers are padded with zeros on the left, there is no other padding; %f is
// FromDouble(value, precision) without regard to the width; %s appends the wide
// text whole, nothing for null. A second "." or the end of the format inside a
// conversion empties the whole result. Any thread.
void FormatUnbounded(clString& result, const wchar_t* format, std::va_list arguments);

#include <windows.h>

#include "foundation/regional.h"
#include "foundation/regional_platform.h"
#include "foundation/settings.h"

namespace {

// In characters, terminator included; a longer text counts as failure.
constexpr int textCapacity = 1000;

}  // namespace

namespace regional_platform {

clString ReadValue(const wchar_t* valueName) {
    return ReadSettingString(valueName, HKEY_CURRENT_USER, L"Control Panel\\International");
}

}  // namespace regional_platform

clString ShortDateFormat() {
    wchar_t text[textCapacity] = {};
    if (GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SSHORTDATE, text, textCapacity) == 0) return {};
    return clString(text);
}

clString DateText(const SYSTEMTIME& time, const wchar_t* format) {
    wchar_t text[textCapacity] = {};
    if (GetDateFormatW(LOCALE_USER_DEFAULT, 0, &time, format, text, textCapacity) == 0) return {};
    return clString(text);
}

clString TimeText(const SYSTEMTIME& time) {
    wchar_t text[textCapacity] = {};
    if (GetTimeFormatW(LOCALE_USER_DEFAULT, 0, &time, L"hh':'mm", text, textCapacity) == 0) {
        return {};
    }
    return clString(text);
}

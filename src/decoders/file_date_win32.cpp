#include <windows.h>

#include "decoders/file_date.h"
#include "foundation/regional.h"

clString FileDateText(const clFileTime& moment) {
    const FILETIME fileTime = {moment.low, moment.high};
    SYSTEMTIME time = {};
    if (!FileTimeToSystemTime(&fileTime, &time)) return {};
    clString text = DateText(time, ShortDateFormat().Chars());
    text.Append(L' ');
    text.Append(TimeText(time));
    return text;
}

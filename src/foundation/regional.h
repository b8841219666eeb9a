// Numbers, sizes, durations, dates and times as the user's region writes them.
//
// The wording is this system's own; signs and separators are read straight from
// the user's profile, once. Changes in the control panel show after a restart.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// What the platform's SYSTEMTIME names.
struct _SYSTEMTIME;

inline constexpr std::int32_t regionalSignLength = 5;  // longer texts are cut
using RegionalSign = wchar_t[regionalSignLength + 1];  // always terminated

// The profile. The comments name the values of the platform's key
// "Control Panel\International" that the fields are filled from.
struct clRegionalSettings {
    bool loaded;
    bool leadingZero;                // iLZero; kept, but no number is written by it
    std::int32_t negativeFormat;     // iNegNumber: 0 (1), 1 -1, 2 - 1, 3 1-, 4 1 -
    bool indianGrouping;             // sGrouping is "3;2;0": groups of two behind the first
    RegionalSign negativeSign;       // sNegativeSign
    RegionalSign positiveSign;       // sPositiveSign, mostly empty
    RegionalSign thousandSeparator;  // sThousand; empty: numbers are not grouped
    RegionalSign decimalSeparator;   // sDecimal
    RegionalSign timeSeparator;      // sTime
};

// The profile in use, all clear until LoadRegional. Everyone else only reads it.
extern clRegionalSettings regionalSettings;

// Tells one value of a profile; empty for a value that is missing.
using RegionalReader = clString (*)(const wchar_t* valueName);

// Fills every field from the values of a profile, asked for in the order of the
// fields; an empty value gives the default. `loaded` is set before the first one.
void FillRegional(clRegionalSettings& settings, RegionalReader read);

// Fills regionalSettings from the user's own profile, once in the process. The
// operations below that need it call this themselves. It takes no lock: while
// one thread is loading, another may see fields that are still clear.
void LoadRegional();

// Groups the digits of a plain number, with "." for its point and "-" for its
// sign, and puts the region's signs in. An empty text stays empty.
void LocaliseNumber(clString& number);
[[nodiscard]] clString NumberText(std::int64_t value);
// At most `decimals` digits behind the point, without trailing zeros (see FromDouble).
[[nodiscard]] clString DecimalText(double value, std::int32_t decimals);
// In powers of 1024: "1.5 MB", with two decimals at most; small counts are
// "1 byte" or "17 bytes". `forceKb` gives whole KB, rounded up from 1% of one on.
[[nodiscard]] clString SizeText(std::int64_t bytes, bool forceKb);

// Styles of DurationText.
inline constexpr std::int32_t durationWords = 0;  // "1 hour 5 minutes": two units at most
inline constexpr std::int32_t durationShort = 1;  // "5:07", "1:05:07"
inline constexpr std::int32_t durationFull = 2;   // "01:05:07"
inline constexpr std::int32_t durationExact = 3;  // "01:05:07.089"

// Empty for any other style. From 597 hours on minutes and seconds are beyond
// their range: 597 hours are "597:71582:4295014".
[[nodiscard]] clString DurationText(std::uint64_t milliseconds, std::int32_t style);

// The user's short date format, as DateText takes it. Empty on failure.
[[nodiscard]] clString ShortDateFormat();
// The date in that format, with the user's names of days and months. Empty on failure.
[[nodiscard]] clString DateText(const _SYSTEMTIME& time, const wchar_t* format);
// Hours and minutes on a 12-hour clock with a colon and without a marker for the
// half of the day, whatever the region's own form is. Empty on failure.
[[nodiscard]] clString TimeText(const _SYSTEMTIME& time);

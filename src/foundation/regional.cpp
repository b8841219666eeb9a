#include "foundation/regional.h"

#include <algorithm>

#include "foundation/regional_platform.h"

constinit clRegionalSettings regionalSettings = {};

namespace {

// Never leaves `sign` without its terminator, not even for a moment: another
// thread may be reading it.
void TakeSign(const clString& value, const wchar_t* ifEmpty, RegionalSign& sign) {
    const wchar_t* text = value.IsEmpty() ? ifEmpty : value.Chars();
    std::int32_t length = 0;
    for (; length < regionalSignLength && text[length] != 0; ++length)
        sign[length] = text[length];
    std::fill(sign + length, sign + regionalSignLength + 1, L'\0');
}

}  // namespace

void FillRegional(clRegionalSettings& settings, RegionalReader read) {
    settings.loaded = true;
    settings.leadingZero = read(L"iLZero").CharAt(1) != L'0';
    const clString negativeFormat = read(L"iNegNumber");
    settings.negativeFormat =
        negativeFormat.IsEmpty() ? 1 : static_cast<std::int32_t>(negativeFormat.ToInt());
    settings.indianGrouping = read(L"sGrouping").Equals(L"3;2;0");
    TakeSign(read(L"sNegativeSign"), L"-", settings.negativeSign);
    TakeSign(read(L"sPositiveSign"), L"", settings.positiveSign);
    TakeSign(read(L"sThousand"), L"", settings.thousandSeparator);
    TakeSign(read(L"sDecimal"), L".", settings.decimalSeparator);
    TakeSign(read(L"sTime"), L":", settings.timeSeparator);
}

void LoadRegional() {
    if (regionalSettings.loaded) return;
    FillRegional(regionalSettings, regional_platform::ReadValue);
}

namespace {

// Groups the digits of the first `last` characters, backwards from their end.
void GroupDigits(clString& number, std::int32_t last) {
    std::int32_t groupSize = 3;
    std::int32_t run = 0;
    for (std::int32_t pos = last; pos >= 1; --pos) {
        if (run == groupSize && number.CharAt(pos) != L'-') {
            number.Insert(regionalSettings.thousandSeparator, pos + 1);
            run = 0;
            if (regionalSettings.indianGrouping) groupSize = 2;
        }
        ++run;
    }
}

// `number` has no sign yet.
void MakeNegative(clString& number) {
    const wchar_t* sign = regionalSettings.negativeSign;
    switch (regionalSettings.negativeFormat) {
        case 0:
            number.Insert(L"(", 1);
            number.Append(L")");
            return;
        case 2:
            number.Insert(L" ", 1);
            number.Insert(sign, 1);
            return;
        case 3:
            number.Append(sign);
            return;
        case 4:
            number.Append(L" ");
            number.Append(sign);
            return;
        default:
            number.Insert(sign, 1);
    }
}

}  // namespace

void LocaliseNumber(clString& number) {
    LoadRegional();
    const std::int32_t point = number.FindChar(L'.');
    // Before the grouping, whose separators may be points themselves.
    if (point != 0) {
        number.EraseRange(point, point);
        number.Insert(regionalSettings.decimalSeparator, point);
    }
    GroupDigits(number, point != 0 ? point - 1 : number.Length());
    if (number.CharAt(1) == L'-') {
        number.EraseRange(1, 1);
        MakeNegative(number);
    } else if (!number.IsEmpty()) {
        number.Insert(regionalSettings.positiveSign, 1);
    }
}

clString NumberText(std::int64_t value) {
    clString text(value);
    LocaliseNumber(text);
    return text;
}

clString DecimalText(double value, std::int32_t decimals) {
    clString text;
    text.FromDouble(value, decimals);
    LocaliseNumber(text);
    return text;
}

clString SizeText(std::int64_t bytes, bool forceKb) {
    struct Unit {
        double bytes;
        const wchar_t* name;
    };
    static constexpr Unit units[] = {
        {1099511627776.0, L" TB"}, {1073741824.0, L" GB"}, {1048576.0, L" MB"}};

    const auto value = static_cast<double>(bytes);
    clString text;
    for (const Unit& unit : units) {
        const double count = value / unit.bytes;
        if (forceKb || static_cast<std::int64_t>(count) == 0) continue;
        text = DecimalText(count, 2);
        text.Append(unit.name);
        return text;
    }
    const double kb = value / 1024;
    if (!forceKb && static_cast<std::int64_t>(kb) == 0) {
        text = clString(bytes);
        text.Append(bytes == 1 ? L" byte" : L" bytes");
        return text;
    }
    text = NumberText(static_cast<std::int64_t>(kb + 0.99));
    text.Append(L" KB");
    return text;
}

namespace {

struct DurationParts {
    std::int64_t hours;
    std::int64_t minutes;
    std::int64_t seconds;
    std::int64_t millis;
};

// Takes whole units off `rest` and returns their number. What they amount to has
// 32 bits, and is meant to: from 597 hours on the rest is off by what that lost.
std::int64_t TakeUnits(std::int64_t& rest, std::int32_t unitMs) {
    const std::int64_t count = rest / unitMs;
    const std::uint32_t product =
        static_cast<std::uint32_t>(count) * static_cast<std::uint32_t>(unitMs);
    const std::int64_t extended = static_cast<std::int32_t>(product);
    rest = static_cast<std::int64_t>(static_cast<std::uint64_t>(rest) -
                                     static_cast<std::uint64_t>(extended));
    return count;
}

DurationParts SplitDuration(std::uint64_t milliseconds) {
    auto rest = static_cast<std::int64_t>(milliseconds);
    DurationParts parts = {};
    parts.hours = TakeUnits(rest, 3600000);
    parts.minutes = TakeUnits(rest, 60000);
    parts.seconds = TakeUnits(rest, 1000);
    parts.millis = rest;
    return parts;
}

// "1 hour", "2 hours".
clString Term(std::int64_t count, const wchar_t* unit) {
    clString text(count);
    text.Append(unit);
    if (count != 1) text.Append(L's');
    return text;
}

// The second term is left out when it counts nothing.
clString TwoTerms(clString first, std::int64_t count, const wchar_t* unit) {
    if (count == 0) return first;
    first.Append(L' ');
    first.Append(Term(count, unit));
    return first;
}

clString InWords(const DurationParts& parts) {
    if (parts.hours != 0) return TwoTerms(Term(parts.hours, L" hour"), parts.minutes, L" minute");
    if (parts.minutes != 0) {
        return TwoTerms(Term(parts.minutes, L" minute"), parts.seconds, L" second");
    }
    if (parts.seconds == 0) {
        return parts.millis != 0 ? Term(parts.millis, L" mili-second") : clString(L"0");
    }
    if (parts.millis == 0) return Term(parts.seconds, L" second");
    clString text = DecimalText(
        static_cast<double>(parts.seconds) + static_cast<double>(parts.millis) / 1000.0, 1);
    text.Append(L" seconds");
    return text;
}

clString Padded(std::int64_t value, std::int32_t digits) {
    clString text(value);
    while (text.Length() < digits)
        text.Insert(L"0", 1);
    return text;
}

clString OnAClock(const DurationParts& parts, std::int32_t style) {
    const bool isShort = style == durationShort;
    clString text;
    if (!isShort || parts.hours != 0) {
        text.Append(Padded(parts.hours, isShort ? 1 : 2));
        text.Append(regionalSettings.timeSeparator);
    }
    text.Append(Padded(parts.minutes, text.IsEmpty() ? 1 : 2));
    text.Append(regionalSettings.timeSeparator);
    text.Append(Padded(parts.seconds, 2));
    if (style == durationExact) {
        text.Append(regionalSettings.decimalSeparator);
        text.Append(Padded(parts.millis, 3));
    }
    return text;
}

}  // namespace

clString DurationText(std::uint64_t milliseconds, std::int32_t style) {
    LoadRegional();
    const DurationParts parts = SplitDuration(milliseconds);
    switch (style) {
        case durationWords:
            return InWords(parts);
        case durationShort:
        case durationFull:
        case durationExact:
            return OnAClock(parts, style);
        default:
            return {};
    }
}

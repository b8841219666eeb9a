#include "mainwindow/columns.h"

const wchar_t* const directoryColumns =
    L"Name\rSize\rType\rDate Modified\rDate Created\rDate Accessed";

const wchar_t* const fileColumns =
    L"Name\rSize\rType\rDate Modified\rDate Created\rDate Accessed\rBit Rate\rChannels\rLength"
    L"\rSample Rate\rSample Size\rCompression";

const wchar_t* const tagColumns =
    L"Artist\rTitle\rAlbum\rTrack\rYear\rGenre\rAlbum Artist\rAlbum Artist - Album - Disc - Track"
    L"\rAlbum - Disc - Track\rBand\rTempo\rComment\rCompilation\rComposer\rConductor\rDisc"
    L"\rEncoded by\rLabel\rLast Played\rMood\rPlaycount\rRating\rStyle\rTrueSpinResult"
    L"\rReplaygain_Track_Gain\rReplaygain_Track_Peak\rReplaygain_Album_Gain"
    L"\rReplaygain_Album_Peak";

const wchar_t* const defaultColumns =
    L"Name\rSize\rType\rDate Modified\rArtist\rTitle\rGenre\rAlbum Artist - Album - Disc - Track"
    L"\rLength\rBit Rate";

namespace {

constexpr const wchar_t* rightAlignedColumns =
    L"Size\rLength\rBit Rate\rChannels\rSample Size\rSample Rate\rCompression";

struct NamedWidth {
    const wchar_t* name;
    std::int32_t width;
};

constexpr NamedWidth defaultWidths[] = {
    {L"Name", 250},        {L"Size", 75},         {L"Length", 75},       {L"Bit Rate", 90},
    {L"Sample Rate", 110}, {L"Sample Size", 110}, {L"Compression", 110}, {L"Channels", 90},
    {L"Track", 75},        {L"Disc", 75},         {L"Rating", 85},       {L"Folder", 250},
};
constexpr std::int32_t otherWidth = 150;

bool IsOneOf(const wchar_t* names, const clString& name) {
    clStringList list;
    list.Split(names);
    return list.IndexOf(name, false) >= 0;
}

}  // namespace

std::int32_t DefaultColumnWidth(const clString& name) {
    for (const NamedWidth& entry : defaultWidths) {
        if (name.CompareNoCase(entry.name) == 0) return entry.width;
    }
    return otherWidth;
}

bool IsRightAligned(const clString& name) {
    return IsOneOf(rightAlignedColumns, name);
}

std::int32_t LeastColumnWidth(bool first) {
    return first ? 50 : 5;
}

void KeepDecoderColumns(clStringList& names) {
    for (std::int64_t i = names.Count() - 1; i >= 0; --i) {
        if (IsOneOf(directoryColumns, *names.At(i))) names.RemoveAt(i);
    }
}

void SavedColumns::Append(const clString& name, std::int32_t width) {
    // A list of one empty name has no CR either; it reads back as no column.
    if (!names.IsEmpty() || !widths.IsEmpty()) {
        names.Append(L'\r');
        widths.Append(L'\r');
    }
    names.Append(name);
    widths.Append(clString(width));
}

std::int32_t SavedWidth(const clStringList& widths, std::int64_t position) {
    return static_cast<std::int32_t>(widths.ItemCopy(position).ToInt());
}

#include "foundation/paths.h"

namespace {

constexpr wchar_t backslash = L'\\';
constexpr wchar_t longPrefix[] = L"\\\\?\\";
constexpr wchar_t serverPrefix[] = L"\\\\";
// The first backslash that can end a root: behind a drive's colon, and behind
// the two that begin a server path. With the long prefix, behind its drive's.
constexpr std::int32_t firstRootEnd = 3;
constexpr std::int32_t firstLongRootEnd = 7;

bool BeginsWith(const clString& path, const wchar_t* text) {
    const wchar_t* chars = path.Chars();
    while (*text != 0 && *chars == *text) {
        ++chars;
        ++text;
    }
    return *text == 0;
}

}  // namespace

std::int32_t ExtensionPosition(const clString& path) {
    const wchar_t* chars = path.Chars();
    for (std::int32_t pos = path.Length(); pos >= 1; --pos) {
        const wchar_t ch = chars[pos - 1];
        if (ch == L'.') return pos;
        if (ch == backslash) return 0;
    }
    return 0;
}

clString ExtensionOf(const clString& path) {
    const std::int32_t dot = ExtensionPosition(path);
    return dot == 0 ? clString(L".") : path.Mid(dot);
}

clString FileNameOf(const clString& path) {
    const std::int32_t last = path.FindLast(backslash);
    return last == 0 ? path : path.Mid(last + 1);
}

clString BaseNameOf(const clString& path) {
    return StripExtension(FileNameOf(path));
}

clString StripExtension(const clString& name) {
    const std::int32_t dot = name.FindLast(L'.');
    return dot == 0 ? name : name.Left(dot - 1);
}

clString DirectoryOf(const clString& path) {
    const std::int32_t last = path.FindLast(backslash);
    return last == 0 ? path : path.Left(last);
}

void EnsureBackslash(clString& path) {
    if (path.CharAt(POS_LAST) != backslash) path.Append(backslash);
}

void StripBackslashes(clString& path) {
    std::int32_t kept = path.Length();
    while (path.CharAt(kept) == backslash)
        --kept;
    path.EraseRange(kept + 1, path.Length());
}

void Quote(clString& path) {
    path.Insert(L"\"", 1);
    path.Append(L'"');
}

clString LongPath(const clString& path, std::int32_t limit) {
    if (path.Length() < limit || BeginsWith(path, serverPrefix)) return path;
    clString result(longPrefix);
    result.Append(path);
    return result;
}

std::int32_t RootLength(const clString& path) {
    const bool isLong = BeginsWith(path, longPrefix);
    const std::int32_t end = path.FindChar(backslash, isLong ? firstLongRootEnd : firstRootEnd);
    return end + 1;  // nothing found is 0, and no root is 1
}

clString PopComponent(clString& path) {
    const std::int32_t behindRoot = RootLength(path);
    if (behindRoot == 1 || path.Length() < behindRoot) return {};
    StripBackslashes(path);
    const std::int32_t last = path.FindLast(backslash);
    if (last == 0) return {};
    clString component = path.Mid(last + 1);
    path.EraseRange(last + 1, path.Length());
    return component;
}

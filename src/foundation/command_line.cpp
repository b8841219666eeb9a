#include "foundation/command_line.h"

clString ArgumentsOf(const clString& commandLine) {
    const wchar_t terminator = commandLine.CharAt(1) == L'"' ? L'"' : L' ';
    const std::int32_t end = commandLine.FindChar(terminator, 2);
    clString result = end == 0 ? commandLine : commandLine.Mid(end + 1);
    result.TrimRight();
    result.TrimLeft();
    return result;
}

clString UnquotedModulePath(const clString& path) {
    if (path.CharAt(1) != L'"') return path;
    const std::int32_t end = path.FindChar(L'"', 2);
    return end == 0 ? path.Mid(2) : path.Mid(2, end - 1);
}

#include "mainwindow/folder_names.h"

#include "selection/selection_host.h"

bool IsRootOfADrive(const clString& path, const clStringList& driveRoots) {
    if (path.Equals(networkMarker) || path.CompareNoCase(L"\\\\", 2) == 0) return true;
    for (std::int64_t i = 0; i < driveRoots.Count(); ++i) {
        if (driveRoots.At(i)->CharAt(1) == path.CharAt(1)) return true;
    }
    return false;
}

bool HasSorted(const clStringList& list, const clString& text) {
    std::int64_t first = 0;
    std::int64_t end = list.Count();
    const auto wanted = reinterpret_cast<std::int64_t>(&text);
    while (first < end) {
        const std::int64_t middle = first + (end - first) / 2;
        const auto item = reinterpret_cast<std::int64_t>(list.At(middle));
        if (StringGoesBefore(item, wanted, 0) != 0) {
            first = middle + 1;
        } else {
            end = middle;
        }
    }
    return first < list.Count() && list.At(first)->Equals(text);
}

#include "mainwindow/start_path.h"

#include "foundation/paths.h"

namespace {

constexpr std::int32_t leastArgument = 3;

}  // namespace

StartPath SplitStartPath(const clString& argument) {
    StartPath start;
    if (argument.Length() < leastArgument) return start;
    clString rest(argument);
    for (clString name = PopComponent(rest); !name.IsEmpty();) {
        start.names.Insert(0, name);
        clString next = PopComponent(rest);
        name.Assign(next);
    }
    start.names.Insert(0, rest);
    clString path;
    for (std::int64_t i = 0; i < start.names.Count(); ++i) {
        path.Append(*start.names.At(i));
        EnsureBackslash(path);
        start.paths.Add(path);
    }
    return start;
}

clString WithoutBackslashes(const clString& component) {
    clString name(component);
    name.Replace(L"\\", L"");
    return name;
}

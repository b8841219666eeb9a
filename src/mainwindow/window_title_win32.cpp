#include "foundation/file.h"
#include "foundation/program_title.h"
#include "mainwindow/window_title.h"

clString BuildWindowTitle(const clString& programFolder) {
    clString title(programTitle);
    clFile file;
    file.path.Assign(programFolder);
    file.path.Append(L"OEM.txt");
    file.Open(GENERIC_READ, OPEN_EXISTING, false);
    if (!file.IsOpen()) return title;
    clString line;
    // An empty file has no line, and the title ends behind the colon.
    const bool hasLine = file.ReadLine(line);
    title.Append(L": ");
    if (hasLine) title.Append(line);
    return title;
}

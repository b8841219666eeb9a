#include "foundation/file.h"
#include "foundation/folders.h"
#include "foundation/paths.h"
#include "foundation/random.h"

namespace {

constexpr wchar_t namePrefix[] = L"TMP";

// True if the file is there afterwards, empty.
bool Truncate(const clString& path) {
    clFile file;
    file.path.Assign(path);
    file.Open(GENERIC_WRITE, CREATE_ALWAYS, false);
    return file.IsOpen();
}

}  // namespace

clTempFile::~clTempFile() {
    if (!IsEmpty()) DeletePath(*this);
}

void clTempFile::Create() {
    if (!IsEmpty()) DeletePath(*this);
    const clString folder = TempDirectory();
    wchar_t name[MAX_PATH] = {};
    if (GetTempFileNameW(folder.Chars(), namePrefix, 0, name) != 0) {
        Assign(name);
    } else {
        Format(L"%s%s%d.tmp", folder.Chars(), namePrefix, Random(9999));
    }
    if (Truncate(*this)) return;
    // The second attempt tells whether the folder was what was missing; without
    // a file the path is all that is left.
    static_cast<void>(CreateDirectoryPath(folder));
    Truncate(*this);
}

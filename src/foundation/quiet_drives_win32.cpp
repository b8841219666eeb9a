#include "foundation/quiet_drives.h"

#include <windows.h>

namespace {

int walks = 0;

}  // namespace

QuietDrives::QuietDrives() {
    ++walks;
    SetErrorMode(SEM_FAILCRITICALERRORS);
}

QuietDrives::~QuietDrives() {
    if (--walks == 0) SetErrorMode(0);
}

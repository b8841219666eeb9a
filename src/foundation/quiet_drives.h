// No box of the system while a walk looks at a drive without a medium.
#pragma once

// While one lives, the process's error mode is SEM_FAILCRITICALERRORS; the end of
// the last one sets it to 0. A walk may list a folder, which is a walk of its own,
// and goes on behind it. The user interface thread.
class QuietDrives {
public:
    QuietDrives();
    QuietDrives(const QuietDrives&) = delete;
    QuietDrives& operator=(const QuietDrives&) = delete;
    ~QuietDrives();
};

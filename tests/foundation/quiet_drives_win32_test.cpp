#include "foundation/quiet_drives.h"

#include <gtest/gtest.h>
#include <windows.h>

TEST(QuietDrives, LastUntilTheOutermostWalkEnds) {
    const UINT before = SetErrorMode(SEM_NOGPFAULTERRORBOX);
    {
        const QuietDrives walk;
        EXPECT_EQ(GetErrorMode(), static_cast<UINT>(SEM_FAILCRITICALERRORS));
        { const QuietDrives within; }
        EXPECT_EQ(GetErrorMode(), static_cast<UINT>(SEM_FAILCRITICALERRORS));
        { const QuietDrives second; }
        EXPECT_EQ(GetErrorMode(), static_cast<UINT>(SEM_FAILCRITICALERRORS));
    }
    EXPECT_EQ(GetErrorMode(), 0u);
    { const QuietDrives another; }
    EXPECT_EQ(GetErrorMode(), 0u);
    SetErrorMode(before);
}

// What the regional settings ask of the platform: the user's profile.
#pragma once

#include "foundation/string.h"

namespace regional_platform {

// One value of the user's profile; empty if it is missing, and always where the
// platform keeps no such profile. Any thread.
clString ReadValue(const wchar_t* valueName);

}  // namespace regional_platform

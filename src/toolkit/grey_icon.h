// The look of an icon on what is disabled.
#pragma once

#include <windows.h>

#include "toolkit/gdi_handle.h"

// A new icon of the same size and mask in which every pixel that isn't black is
// grey (see GreyForm). None for null, and for an icon without colours.
clIconHandle MakeGreyIcon(HICON icon);

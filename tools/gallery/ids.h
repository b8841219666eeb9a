// The gallery's own dialogs, beside the program's resources.
#pragma once

#define IDD_GALLERY 301
#define IDD_PAGE 302

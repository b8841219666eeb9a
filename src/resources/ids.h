// The numbers by which the program finds its resources and hears of its commands.
// Macros, since the resource compiler reads them too.
#pragma once

// Dialogs
#define IDD_MAIN 101
#define IDD_FILTER 114
#define IDD_LIST 124

// Menus
#define IDM_ROWS 111
#define IDM_COLUMNS 120

// Button strips: normal, pressed, hot and focus frame over their masks.
#define IDB_CONVERT 115
#define IDB_REFRESH 116
#define IDB_RESET 117
#define IDB_FILTER 118
#define IDB_HELP 119
#define IDB_LIST 123
// Five lit stars over five unlit ones, and their mask.
#define IDB_STARS 121
#define IDB_STARS_MASK 122

// The program's icon has the least number: the shell shows the first one.
#define IDI_PROGRAM 102
#define IDI_SORT_DESCENDING 103
#define IDI_SORT_ASCENDING 104
// The states of a folder. IDI_STATE_NONE is the unticked box of a row as well.
#define IDI_STATE_RECURSIVE 105
#define IDI_STATE_FOLDER_ONLY 106
#define IDI_STATE_CHILD_SELECTED 107
#define IDI_STATE_HAS_FILES 108
#define IDI_STATE_NONE 110
#define IDI_TICKED 113

// Controls; OK and Cancel are IDOK and IDCANCEL.
#define IDC_CONVERT 3
#define IDC_FOLDER_TREE 1001
#define IDC_FILE_LIST 1002
#define IDC_DEBUG_DUMP 1003  // hidden, and connected to nothing
#define IDC_EXCLUDE_ALL 1004
#define IDC_INCLUDE_ALL 1005

// Commands of the row menu
#define ID_CHECK_ALL 40001
#define ID_UNCHECK_ALL 40002
#define ID_INVERT_SELECTION 40003

// Items of the column menu. All but the default columns are placeholders, removed
// when what they hold the place of has been inserted.
#define ID_COLUMNS_TAGS 40010
#define ID_COLUMNS_PROPERTIES 40011
#define ID_COLUMNS_TOP 40012
#define ID_COLUMNS_MISSING 40013
#define ID_COLUMNS_KEEP_PLACES 40018
#define ID_COLUMNS_DEFAULT 40019

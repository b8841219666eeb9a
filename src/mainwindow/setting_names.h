// The settings of the main window and of the conversion list, values of the
// settings key (see foundation/settings.h).
#pragma once

namespace setting {

// Placement, in pixels; all missing when the window was closed maximised or
// minimised. REG_DWORD.
inline constexpr const wchar_t* x = L"zKR-FileSelector-X";
inline constexpr const wchar_t* y = L"zKR-FileSelector-Y";
inline constexpr const wchar_t* width = L"zKR-FileSelector-W";
inline constexpr const wchar_t* height = L"zKR-FileSelector-H";
inline constexpr const wchar_t* notMaximised = L"zKR-FileSelector-NotMax";  // 1 or missing
// The divider's position in pixels; 0 for the default. REG_DWORD. The spelling is
// the one that is stored.
inline constexpr const wchar_t* divider = L"zKR-FileSelector-Devider";
// Names and pixel widths of the columns in display order, one CR between two.
// REG_SZ.
inline constexpr const wchar_t* columns = L"zKR-FileSelector-Cols";
inline constexpr const wchar_t* columnWidths = L"zKR-FileSelector-ColWidths";
inline constexpr const wchar_t* listColumns = L"zKR-FileSelector-List-Cols";
inline constexpr const wchar_t* listColumnWidths = L"zKR-FileSelector-List-ColWidths";

}  // namespace setting

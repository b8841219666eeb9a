// What the program calls itself.
#pragma once

// The title of the main window and of every message box but the file layer's.
inline constexpr const wchar_t* programTitle = L"Tonequarry Batch Converter";

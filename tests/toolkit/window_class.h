// The classes that windows are made of.
#pragma once

#include <windows.h>

#include <string>

std::string ClassOf(HWND window);
// Whether the program has a class of this name.
bool IsRegistered(const std::string& className);

// All windows of the process that have an object.
#pragma once

#include <windows.h>

#include "foundation/string.h"

class XWindow;

// From any thread. Changes take the window mutex for their duration; look-ups
// only where a change is under way. An object that was found stays valid only on
// the thread of its window.

// With the window that it has now.
void AddToWindowTable(XWindow* object);
// The others keep their order. An object that is not there changes nothing.
void RemoveFromWindowTable(const XWindow* object);
// The first object that was added with this window, or null.
XWindow* FindInWindowTable(HWND window);
// "XWnd" and a number that counts from 0 and never comes twice.
clString NewWindowClassName();
// Keeps the name of a class whose window may still be there.
void KeepClassForLater(const clString& name);
// Unregisters the classes kept so, but for those that still have their window.
void GiveKeptClassesBack();

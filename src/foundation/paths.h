// Paths: the rules on their text, and the few operations on disk.
//
// A path is Windows text: backslash separated, with a drive letter or server
// prefix, usually absolute. Folder paths end in a backslash. Positions are
// 1-based, as in clString. Any thread; nothing is shared.
#pragma once

#include <cstdint>

#include "foundation/string.h"

// Lengths from which on a path is given to the platform with its long prefix:
// for opening a file, and for everything on folders, deleting, attributes and
// enumerating.
inline constexpr std::int32_t fileLongPathLimit = 260;
inline constexpr std::int32_t folderLongPathLimit = 248;

// The text rules. None of them touches the disk.

// Position of the dot that begins the extension, or 0 without one: the last dot
// behind the last backslash. The form of ExtensionOf that makes no string.
std::int32_t ExtensionPosition(const clString& path);
// The extension with its dot; "." when there is none, never the empty string,
// so a real extension is longer than one character.
clString ExtensionOf(const clString& path);
// The text behind the last backslash; the whole path, tag included, without one.
clString FileNameOf(const clString& path);
// The file name without its extension.
clString BaseNameOf(const clString& path);
// `name` up to its last dot, which is not part of the result. For bare names:
// backslashes mean nothing here.
clString StripExtension(const clString& name);
// Everything up to and including the last backslash; the whole path without one.
clString DirectoryOf(const clString& path);
// Appends a backslash unless the last character is one; "" becomes "\".
void EnsureBackslash(clString& path);
// Removes all trailing backslashes.
void StripBackslashes(clString& path);
// Puts a double quote on both ends, whether or not they have one.
void Quote(clString& path);

// The text to give to the platform: with "\\?\" in front from `limit`
// characters on. A path that begins with two backslashes stays as it is,
// whatever its length; nothing is normalised.
clString LongPath(const clString& path, std::int32_t limit);
// Position of the first character behind the root, 1 for no root. The root of a
// server path is the server; a relative path whose first component has two or
// more letters looks as if that were its root.
std::int32_t RootLength(const clString& path);
// Takes the last component off `path`, which keeps its trailing backslash, and
// returns it. Empty: nothing is left above the root.
clString PopComponent(clString& path);

// Operations on disk. They tell failure by their result only.

// Creates the folder and all missing parents. True if all of them exist
// afterwards, and for a path that is nothing but a root; false for "". Stops at
// the first failure, and what was made until then stays.
[[nodiscard]] bool CreateDirectoryPath(const clString& path);
// Deletes one file, if need be after clearing its read-only mark, which is tried
// once: `isRetry` says that it has been.
bool DeletePath(const clString& path, bool isRetry = false);
// False if there is no such file or its attributes cannot be written.
bool ClearReadOnly(const clString& path);
// True for a file, a folder and the root of a drive; false for "".
[[nodiscard]] bool PathExists(const clString& path);

// Paths beyond the 260 units that Windows takes without more ado.
#pragma once

#include <string>

namespace companion {

// `path` with the prefix \\?\ (\\?\UNC\ for shares) when it has 248 units or
// more and neither that prefix nor \\.\ yet; else, or when it cannot be
// resolved, unchanged. The prefixed form is taken by the system as it stands,
// so dots and slashes are resolved first.
std::wstring ExtendedPath(const std::wstring& path);

}  // namespace companion

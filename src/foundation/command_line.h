// The text rules on a process's command line. Any thread.
#pragma once

#include "foundation/string.h"

// What stands behind the program's name, without spaces at its ends. A quoted
// name ends at its closing quote, any other at the first space; when that is
// missing, the whole command line is the result.
clString ArgumentsOf(const clString& commandLine);
// `path` without the double quotes around it, and without what follows them.
clString UnquotedModulePath(const clString& path);

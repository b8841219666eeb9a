// The decoder folder of a test program, filled with scripted decoders.
#pragma once

#include <string>
#include <vector>

#include "foundation/string.h"

// Begins and ends with no folder "decoder" beside the test program, no cache of
// decoders and no exclusion setting; the user's own setting comes back at the
// end. One per process at a time, and one process per registry.
class clScriptedFolder {
public:
    clScriptedFolder();
    clScriptedFolder(const clScriptedFolder&) = delete;
    clScriptedFolder& operator=(const clScriptedFolder&) = delete;
    ~clScriptedFolder();

    // Puts a scripted decoder into the folder as `name`.dll and returns its full
    // path. `variant` is "complete" or "without_" and an export's name; for the
    // script see scripted_decoder/script.h.
    clString Add(const std::string& name, const std::string& script,
                 const std::string& variant = "complete");
    // The library reads its script anew for each instance.
    void SetScript(const std::string& name, const std::string& script);
    // Puts a file into the folder that is no library, whatever its name says.
    clString AddFile(const std::string& fileName, const std::string& content);
    clString AddSubfolder(const std::string& name);
    void Remove(const std::string& name);

    // The calls that this library has had, in order; empty before its first load.
    std::vector<std::string> Log(const std::string& name) const;
    void ClearLog(const std::string& name);
    // How often exactly this line stands in the log.
    long Count(const std::string& name, const std::string& line) const;

    // Full path of a file of that name in the folder.
    clString Path(const std::string& fileName) const;
    // The value of the cache for an extension; "" without one.
    clString Cached(const wchar_t* extension) const;
    // Its registry type (1 is REG_SZ) and its size in bytes; 0 without one.
    long CachedType(const wchar_t* extension) const;
    long CachedBytes(const wchar_t* extension) const;
    void SetCached(const wchar_t* extension, const clString& library, unsigned long type = 1);
    // The names of the cache's values as they are spelled.
    std::vector<std::string> CachedNames() const;
    void SetExclusion(const clString& text);

private:
    std::string savedExclusion;  // its bytes
    bool hadExclusion = false;
};

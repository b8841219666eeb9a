#include "tests/support/decoder_folder.h"

#include <windows.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "tests/support/text.h"

namespace fs = std::filesystem;

namespace {

// Spelled out: a test that took them from the program could not see them change.
constexpr const wchar_t* cacheKey = L"Software\\Brindlefen\\Tonequarry\\DecoderCache64";
constexpr const wchar_t* settingsKey = L"Software\\Brindlefen\\Tonequarry";
constexpr const wchar_t* exclusionName = L"zKR-FileSelector-Exclusion";

fs::path ProgramFolder() {
    wchar_t path[1000] = {};
    GetModuleFileNameW(nullptr, path, 999);
    return fs::path(path).parent_path();
}

fs::path Folder() {
    return ProgramFolder() / L"decoder";
}

void WriteFileBytes(const fs::path& path, const std::string& content) {
    std::ofstream stream(path, std::ios::binary | std::ios::trunc);
    stream << content;
    if (!stream.flush()) throw std::runtime_error("cannot write " + path.string());
}

HKEY CreateKey(const wchar_t* path) {
    HKEY key = nullptr;
    RegCreateKeyExW(HKEY_CURRENT_USER, path, 0, nullptr, 0, KEY_READ | KEY_WRITE, nullptr, &key,
                    nullptr);
    return key;
}

// A library that is still loaded cannot be deleted: that is a fault of the test
// or of what it tests, and it must not be passed over.
void Clean() {
    fs::remove_all(Folder());
    RegDeleteTreeW(HKEY_CURRENT_USER, cacheKey);
}

}  // namespace

clScriptedFolder::clScriptedFolder() {
    Clean();
    fs::create_directory(Folder());
    const HKEY key = CreateKey(settingsKey);
    DWORD size = 0;
    if (RegQueryValueExW(key, exclusionName, nullptr, nullptr, nullptr, &size) == ERROR_SUCCESS) {
        savedExclusion.resize(size);
        RegQueryValueExW(key, exclusionName, nullptr, nullptr,
                         reinterpret_cast<BYTE*>(savedExclusion.data()), &size);
        hadExclusion = true;
    }
    RegDeleteValueW(key, exclusionName);
    RegCloseKey(key);
}

clScriptedFolder::~clScriptedFolder() {
    const HKEY key = CreateKey(settingsKey);
    RegDeleteValueW(key, exclusionName);
    if (hadExclusion) {
        RegSetValueExW(key, exclusionName, 0, REG_SZ,
                       reinterpret_cast<const BYTE*>(savedExclusion.data()),
                       static_cast<DWORD>(savedExclusion.size()));
    }
    RegCloseKey(key);
    // Out of a destructor it ends the process, so that the test fails.
    Clean();
}

clString clScriptedFolder::Add(const std::string& name, const std::string& script,
                               const std::string& variant) {
    const fs::path library = Folder() / (name + ".dll");
    const fs::path source = ProgramFolder() / "scripted" / (variant + ".dll");
    // Not copy_file, which does not overwrite here whatever its options say.
    if (CopyFileW(source.c_str(), library.c_str(), FALSE) == 0) {
        throw std::runtime_error("cannot copy " + source.string());
    }
    SetScript(name, script);
    return clString(library.c_str());
}

void clScriptedFolder::SetScript(const std::string& name, const std::string& script) {
    WriteFileBytes(Folder() / (name + ".txt"), script);
}

clString clScriptedFolder::AddFile(const std::string& fileName, const std::string& content) {
    WriteFileBytes(Folder() / fileName, content);
    return Path(fileName);
}

clString clScriptedFolder::AddSubfolder(const std::string& name) {
    fs::create_directory(Folder() / name);
    return Path(name);
}

void clScriptedFolder::Remove(const std::string& name) {
    fs::remove(Folder() / (name + ".dll"));
}

std::vector<std::string> clScriptedFolder::Log(const std::string& name) const {
    std::ifstream stream(Folder() / (name + ".log"));
    std::vector<std::string> lines;
    for (std::string line; std::getline(stream, line);)
        lines.push_back(line);
    return lines;
}

void clScriptedFolder::ClearLog(const std::string& name) {
    fs::remove(Folder() / (name + ".log"));
}

long clScriptedFolder::Count(const std::string& name, const std::string& line) const {
    const std::vector<std::string> lines = Log(name);
    return static_cast<long>(std::count(lines.begin(), lines.end(), line));
}

clString clScriptedFolder::Path(const std::string& fileName) const {
    return clString((Folder() / fileName).c_str());
}

clString clScriptedFolder::Cached(const wchar_t* extension) const {
    wchar_t text[1000] = {};
    DWORD size = sizeof(text) - sizeof(wchar_t);
    const HKEY key = CreateKey(cacheKey);
    RegQueryValueExW(key, extension, nullptr, nullptr, reinterpret_cast<BYTE*>(text), &size);
    RegCloseKey(key);
    return clString(text);
}

long clScriptedFolder::CachedType(const wchar_t* extension) const {
    DWORD type = 0;
    const HKEY key = CreateKey(cacheKey);
    RegQueryValueExW(key, extension, nullptr, &type, nullptr, nullptr);
    RegCloseKey(key);
    return static_cast<long>(type);
}

long clScriptedFolder::CachedBytes(const wchar_t* extension) const {
    DWORD size = 0;
    const HKEY key = CreateKey(cacheKey);
    RegQueryValueExW(key, extension, nullptr, nullptr, nullptr, &size);
    RegCloseKey(key);
    return static_cast<long>(size);
}

void clScriptedFolder::SetCached(const wchar_t* extension, const clString& library,
                                 unsigned long type) {
    const HKEY key = CreateKey(cacheKey);
    RegSetValueExW(key, extension, 0, type, reinterpret_cast<const BYTE*>(library.Chars()),
                   static_cast<DWORD>(library.Length() + 1) * sizeof(wchar_t));
    RegCloseKey(key);
}

std::vector<std::string> clScriptedFolder::CachedNames() const {
    const HKEY key = CreateKey(cacheKey);
    std::vector<std::string> names;
    wchar_t name[300] = {};
    DWORD length = 300;
    for (DWORD i = 0;
         RegEnumValueW(key, i, name, &length, nullptr, nullptr, nullptr, nullptr) == ERROR_SUCCESS;
         ++i) {
        names.push_back(Utf8(name));
        length = 300;
    }
    RegCloseKey(key);
    return names;
}

void clScriptedFolder::SetExclusion(const clString& text) {
    const HKEY key = CreateKey(settingsKey);
    RegSetValueExW(key, exclusionName, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.Chars()),
                   static_cast<DWORD>(text.Length() + 1) * sizeof(wchar_t));
    RegCloseKey(key);
}

// The decoder libraries as the program uses them: found by name, loaded,
// asked, and let go of again at each change of extension.
#include <gtest/gtest.h>
#include <windows.h>

#include <psapi.h>

#include <algorithm>
#include <array>
#include <cstdio>
#include <string>
#include <vector>

#include "sdk/decoder.h"

namespace {

std::wstring Wide(const char* utf8) {
    const int units = MultiByteToWideChar(CP_UTF8, 0, utf8, -1, nullptr, 0);
    std::wstring text(static_cast<std::size_t>(units), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, utf8, -1, text.data(), units);
    text.resize(text.size() - 1);
    return text;
}

// A path of the build machine; all of it lies on drive Z.
std::wstring WindowsPath(const std::string& path) {
    std::wstring result = L"Z:" + Wide(path.c_str());
    for (wchar_t& unit : result) {
        if (unit == L'/') unit = L'\\';
    }
    return result;
}

std::wstring Sample(const char* relative) {
    return WindowsPath(std::string(TEST_SAMPLE_LIBRARY "/") + relative);
}

class Library {
public:
    explicit Library(const char* path) : _module(LoadLibraryW(WindowsPath(path).c_str())) {
        if (!_module) return;
        constexpr const char* names[] = {"Create", "Destroy",     "Get",         "Open",      "Set",
                                         "Close",  "DecodeBlock", "SetPosition", "DeleteATag"};
        for (std::size_t i = 0; i < exports.size(); ++i)
            exports[i] = GetProcAddress(_module, names[i]);
    }
    ~Library() {
        if (_module) FreeLibrary(_module);
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;

    bool Complete() const {
        for (const FARPROC found : exports) {
            if (!found) return false;
        }
        return _module != nullptr;
    }

    // Create, Open, Destroy: whether the file was read, and its length.
    bool Open(const std::wstring& path, std::int64_t* lengthMs = nullptr) const {
        DecoderCreateRecord create{};
        const DecoderInstance instance = As<DecoderCreateFunction>(0)(&create);
        if (instance == 0) return false;
        DecoderOpenRecord record{};
        record.fileName = path.c_str();
        record.flags = DECODER_OPEN_FLAGS;
        const bool opened = As<DecoderOpenFunction>(3)(instance, &record) != 0;
        if (lengthMs) *lengthMs = record.lengthMs;
        As<DecoderDestroyFunction>(1)(instance);
        return opened;
    }

    // The extensions of "Decodes".
    std::vector<std::wstring> Extensions() const {
        const DecoderInstance instance = As<DecoderCreateFunction>(0)(nullptr);
        std::vector<std::wstring> extensions;
        DecoderGetRecord record{};
        while (As<DecoderGetFunction>(2)(instance, L"Decodes", &record) != 0) {
            extensions.emplace_back(record.text);
            ++record.index;
        }
        As<DecoderDestroyFunction>(1)(instance);
        return extensions;
    }

    std::array<FARPROC, 9> exports{};

private:
    template <typename Function>
    Function As(std::size_t index) const {
        return reinterpret_cast<Function>(reinterpret_cast<void*>(exports[index]));
    }

    HMODULE _module;
};

struct Job {
    const char* decoder;
    const char* file;
};

constexpr Job jobs[] = {
    {TEST_PCM_LIBRARY, "Åse Lindqvist/Våren – uncompressed/01 - Första ljuset.wav"},
    {TEST_TAGLIB_LIBRARY, "夜の庭/月光/01 - 月光.flac"},
    {TEST_PCM_LIBRARY, "Чайка/Ночной поезд/01 - Перрон.aiff"},
    {TEST_TAGLIB_LIBRARY, "Quarry Choir/Limestone/06 - Two Voices.mp3"},
    {TEST_PCM_LIBRARY, "Чайка/Ночной поезд/04 - Река.au"},
    {TEST_TAGLIB_LIBRARY, "DJ 🎵 Emoji/Ünïcödé ☀/02 - Moon 🌙.opus"},
    {TEST_PCM_LIBRARY, "Чайка/Ночной поезд/06 - Поле.caf"},
    {TEST_TAGLIB_LIBRARY, "Lía Ñandú/Canción de cuna/01 - Luna.m4a"},
    {TEST_PCM_LIBRARY, "Åse Lindqvist/Våren – uncompressed/11 - Wave64.w64"},
    {TEST_TAGLIB_LIBRARY, "Lía Ñandú/Canción de cuna/05 - Estrella.wma"},
};

// What this process has committed for itself, added up page range by page range.
SIZE_T CommittedBytes() {
    SIZE_T sum = 0;
    MEMORY_BASIC_INFORMATION range{};
    const char* at = nullptr;
    while (VirtualQuery(at, &range, sizeof(range)) != 0) {
        if (range.State == MEM_COMMIT && range.Type == MEM_PRIVATE) sum += range.RegionSize;
        at = static_cast<const char*>(range.BaseAddress) + range.RegionSize;
    }
    return sum;
}

// The system's own count; not every system that runs Windows programs keeps it.
SIZE_T PrivateBytes() {
    PROCESS_MEMORY_COUNTERS_EX counters{};
    counters.cb = sizeof(counters);
    GetProcessMemoryInfo(GetCurrentProcess(), reinterpret_cast<PROCESS_MEMORY_COUNTERS*>(&counters),
                         sizeof(counters));
    return counters.PrivateUsage != 0 ? counters.PrivateUsage : CommittedBytes();
}

TEST(DecoderLibraries, OfferTheNineExports) {
    for (const char* path : {TEST_PCM_LIBRARY, TEST_TAGLIB_LIBRARY})
        EXPECT_TRUE(Library(path).Complete()) << path;
}

TEST(DecoderLibraries, ShareNoExtension) {
    const auto pcm = Library(TEST_PCM_LIBRARY).Extensions();
    const auto taglib = Library(TEST_TAGLIB_LIBRARY).Extensions();
    EXPECT_FALSE(pcm.empty());
    EXPECT_FALSE(taglib.empty());
    for (const std::wstring& extension : pcm)
        EXPECT_EQ(taglib.end(), std::find(taglib.begin(), taglib.end(), extension));
}

TEST(DecoderLibraries, StayInMemoryAndDoNotGrowWhenLoadedAnew) {
    constexpr int runs = 1000;
    SIZE_T before = 0;
    for (int run = 0; run < runs; ++run) {
        const Job& job = jobs[static_cast<std::size_t>(run) % std::size(jobs)];
        const Library library(job.decoder);
        ASSERT_TRUE(library.Complete()) << job.decoder;
        ASSERT_TRUE(library.Open(Sample(job.file))) << job.file;
        if (run == 200) before = PrivateBytes();
    }
    ASSERT_GT(before, 0u);
    const SIZE_T after = PrivateBytes();
    std::printf("private bytes: %llu after 200 runs, %llu after %d\n",
                static_cast<unsigned long long>(before), static_cast<unsigned long long>(after),
                runs);
    for (const char* path : {TEST_PCM_LIBRARY, TEST_TAGLIB_LIBRARY})
        EXPECT_TRUE(GetModuleHandleW(WindowsPath(path).c_str())) << path;
    // A library that leaves 62 KiB behind each time grows by 25 MB.
    EXPECT_LT(after, before + 2'000'000);
}

// A file with a path of more than 300 characters, gone with the object.
class DeepCopy {
public:
    explicit DeepCopy(const char* sample) {
        wchar_t folder[MAX_PATH + 1] = {};
        GetTempPathW(MAX_PATH, folder);
        std::wstring path =
            L"\\\\?\\" + std::wstring(folder) + L"deep" + std::to_wstring(GetCurrentProcessId());
        for (int i = 0; i < 6; ++i) {
            CreateDirectoryW(path.c_str(), nullptr);
            _folders.push_back(path);
            path += L"\\" + std::wstring(60, static_cast<wchar_t>(L'a' + i)) + L" ночь";
        }
        const std::wstring source = Sample(sample);
        _file = _folders.back() + L"\\夜の曲 🎵" + source.substr(source.find_last_of(L'.'));
        _copied = CopyFileW(source.c_str(), _file.c_str(), FALSE) != 0;
    }
    ~DeepCopy() {
        DeleteFileW(_file.c_str());
        while (!_folders.empty()) {
            RemoveDirectoryW(_folders.back().c_str());
            _folders.pop_back();
        }
    }
    DeepCopy(const DeepCopy&) = delete;
    DeepCopy& operator=(const DeepCopy&) = delete;

    bool Copied() const { return _copied; }
    // Without the prefix that lifts the limit, as the program hands it over.
    std::wstring Path() const { return _file.substr(4); }

private:
    std::vector<std::wstring> _folders;
    std::wstring _file;
    bool _copied = false;
};

TEST(DecoderLibraries, ReadFilesBehindLongPaths) {
    for (std::size_t i = 0; i < 2; ++i) {
        const DeepCopy copy(jobs[i].file);
        ASSERT_TRUE(copy.Copied()) << GetLastError();
        EXPECT_GT(copy.Path().size(), 300u);
        const Library library(jobs[i].decoder);
        std::int64_t lengthMs = 0;
        EXPECT_TRUE(library.Open(copy.Path(), &lengthMs)) << jobs[i].decoder;
        EXPECT_EQ(2000, lengthMs);
    }
}

TEST(DecoderLibraries, ReadAFileThatAnotherProgramHasOpenForWriting) {
    for (std::size_t i = 0; i < 2; ++i) {
        const DeepCopy copy(jobs[i].file);
        const std::wstring path = L"\\\\?\\" + copy.Path();
        const HANDLE writer = CreateFileW(path.c_str(), GENERIC_READ | GENERIC_WRITE,
                                          FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                          nullptr, OPEN_EXISTING, 0, nullptr);
        ASSERT_NE(INVALID_HANDLE_VALUE, writer);
        EXPECT_TRUE(Library(jobs[i].decoder).Open(copy.Path()));
        CloseHandle(writer);
    }
}

}  // namespace

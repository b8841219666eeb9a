// A decoder library that does what the script beside it says (see script.h) and
// writes each call into a log beside it, one line each:
//
//   load, unload              "load loud" without the thread's quiet error mode
//   create N, create refused  N counts the instances since the load, from 1
//   get NAME INDEX
//   open FILE FLAGS
//   destroy N
//   Set, Close, DecodeBlock, SetPosition, DeleteATag
//
// A line ends in " dirty" when the record was not zeroed on entry. To make that
// mistake visible every call scribbles over the fields that the program does not
// read, and a text is destroyed at the next call on its instance.
#include <windows.h>

#include <algorithm>
#include <atomic>
#include <memory>

#include "tests/support/scripted_decoder/script.h"

namespace {

std::wstring basePath;  // of this library, without its extension
std::atomic<int> instancesMade;

struct Instance {
    int number = 0;
    bool hasOpened = false;
    scripted::Script script;
    std::wstring text;
    std::wstring text2;
    scripted::Bytes tags;
    scripted::Bytes properties;
};

std::string Utf8(const std::wstring& text) {
    const int length = WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()),
                                           nullptr, 0, nullptr, nullptr);
    std::string out(static_cast<std::size_t>(length), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), length,
                        nullptr, nullptr);
    return out;
}

std::wstring Wide(const std::string& text) {
    const int length =
        MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), nullptr, 0);
    std::wstring out(static_cast<std::size_t>(length), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), static_cast<int>(text.size()), out.data(), length);
    return out;
}

// Appending is one write, so that lines of several threads do not mix.
void Log(const std::wstring& line, bool dirty = false) {
    const std::string text = Utf8(line) + (dirty ? " dirty\n" : "\n");
    const HANDLE file =
        CreateFileW((basePath + L".log").c_str(), FILE_APPEND_DATA,
                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS, 0, nullptr);
    DWORD written = 0;
    WriteFile(file, text.data(), static_cast<DWORD>(text.size()), &written, nullptr);
    CloseHandle(file);
}

scripted::Script ReadScript() {
    const HANDLE file = CreateFileW((basePath + L".txt").c_str(), GENERIC_READ, FILE_SHARE_READ,
                                    nullptr, OPEN_EXISTING, 0, nullptr);
    std::string text;
    if (file != INVALID_HANDLE_VALUE) {
        text.resize(GetFileSize(file, nullptr));
        DWORD read = 0;
        ReadFile(file, text.data(), static_cast<DWORD>(text.size()), &read, nullptr);
        CloseHandle(file);
    }
    return scripted::ParseScript(Wide(text));
}

template <std::size_t Size>
bool IsZero(const std::uint8_t (&bytes)[Size]) {
    return std::all_of(bytes, bytes + Size, [](std::uint8_t byte) { return byte == 0; });
}

// Gives a text to the program in a block of its own, and takes the last one away.
const wchar_t* Hand(std::wstring& slot, const scripted::OptionalText& text) {
    std::fill(slot.begin(), slot.end(), L'#');
    slot.clear();
    slot.shrink_to_fit();
    if (!text) return nullptr;
    slot = *text;
    return slot.c_str();
}

void GetType(Instance& instance, DecoderGetRecord& record, std::int32_t& result) {
    scripted::Type type;
    result = 0;
    if (record.index < instance.script.types.size()) {
        type = instance.script.types[record.index];
        result = instance.script.decodesResult;
    }
    record.text = Hand(instance.text, type.extension);
    record.text2 = Hand(instance.text2, type.description);
}

std::wstring FileNameOf(const std::wstring& path) {
    return path.substr(path.find_last_of(L'\\') + 1);
}

// Not at all for an empty name, or for one that no event has.
void WaitFor(const std::wstring& eventName) {
    if (eventName.empty()) return;
    const HANDLE event = OpenEventW(SYNCHRONIZE, FALSE, eventName.c_str());
    if (event == nullptr) return;
    WaitForSingleObject(event, INFINITE);
    CloseHandle(event);
}

void Delay(const scripted::FileScript& file) {
    if (file.sleepMs != 0) Sleep(file.sleepMs);
    WaitFor(file.waitEvent);
}

// `file` is a copy: the echo is added to it.
void FillOpenRecord(Instance& instance, scripted::FileScript file, DecoderOpenRecord& record) {
    if (!file.echo.empty()) scripted::AppendEntry(file.tags, file.echo, record.fileName);
    record.waveFormat = file.wave;
    record.bitRate = file.bitRate;
    record.lengthMs = file.lengthMs;
    record.sourceBytes = file.sourceBytes;
    // Of exactly the needed size, so that a read beyond it can be found.
    instance.tags = file.tags.value_or(scripted::Bytes());
    instance.properties = file.properties.value_or(scripted::Bytes());
    if (file.tags) record.tags = instance.tags.data();
    if (file.properties) record.properties = instance.properties.data();
    record.tagsSize = static_cast<std::uint32_t>(instance.tags.size());
    record.propertiesSize = static_cast<std::uint32_t>(instance.properties.size());
}

Instance& InstanceOf(DecoderInstance instance) {
    return *reinterpret_cast<Instance*>(instance);
}

// Each load takes a slot of thread-local storage that the compiler's runtime never
// gives back, and a process has about a thousand.
void PinLibrary() {
    HMODULE self = nullptr;
    GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                       reinterpret_cast<LPCWSTR>(&InstanceOf), &self);
}

}  // namespace

extern "C" {

DecoderInstance Create(DecoderCreateRecord* record) {
    const bool dirty =
        record->reserved[0] != 0 || record->reserved[1] != 0 || record->reserved[2] != 0;
    auto instance = std::make_unique<Instance>();
    instance->script = ReadScript();
    if (instance->script.pinned) PinLibrary();
    if (!instance->script.creates) {
        Log(L"create refused", dirty);
        return 0;
    }
    instance->number = ++instancesMade;
    Log(L"create " + std::to_wstring(instance->number), dirty);
    return reinterpret_cast<DecoderInstance>(instance.release());
}

void Destroy(DecoderInstance instance) {
    const std::unique_ptr<Instance> owned(&InstanceOf(instance));
    if (owned->hasOpened) {
        Sleep(owned->script.destroySleepMs);
        WaitFor(owned->script.destroyWaitEvent);
    }
    Log(L"destroy " + std::to_wstring(owned->number));
}

std::int32_t Get(DecoderInstance handle, const DecoderChar* name, DecoderGetRecord* record) {
    Instance& instance = InstanceOf(handle);
    const bool dirty = !IsZero(record->reservedIn) || !IsZero(record->reservedOut) ||
                       record->text != nullptr || record->text2 != nullptr;
    Log(L"get " + std::wstring(name) + L" " + std::to_wstring(record->index), dirty);
    std::int32_t result = 0;
    if (std::wstring(name) == L"Decodes") {
        GetType(instance, *record, result);
    } else if (std::wstring(name) == L"Property Elements") {
        record->text = Hand(instance.text, instance.script.elements);
        record->text2 = Hand(instance.text2, std::nullopt);
        result = record->text != nullptr ? instance.script.elementsResult : 0;
    }
    std::fill(std::begin(record->reservedIn), std::end(record->reservedIn), std::uint8_t{0xEE});
    std::fill(std::begin(record->reservedOut), std::end(record->reservedOut), std::uint8_t{0xEE});
    return result;
}

std::int32_t Open(DecoderInstance handle, DecoderOpenRecord* record) {
    Instance& instance = InstanceOf(handle);
    instance.hasOpened = true;
    DecoderOpenRecord expected = {};
    expected.fileName = record->fileName;
    expected.flags = record->flags;
    const bool dirty = memcmp(&expected, record, sizeof(expected)) != 0;
    Log(L"open " + std::wstring(record->fileName) + L" " + std::to_wstring(record->flags), dirty);
    const scripted::FileScript& file = instance.script.ForFile(FileNameOf(record->fileName));
    Delay(file);
    if (file.needsFile && GetFileAttributesW(record->fileName) == INVALID_FILE_ATTRIBUTES) return 0;
    FillOpenRecord(instance, file, *record);
    std::fill(std::begin(record->reservedA), std::end(record->reservedA), std::uint8_t{0xEE});
    std::fill(std::begin(record->reservedB), std::end(record->reservedB), std::uint8_t{0xEE});
    return file.opens ? 1 : 0;
}

void Set() {
    Log(L"Set");
}
void Close() {
    Log(L"Close");
}
void DecodeBlock() {
    Log(L"DecodeBlock");
}
void SetPosition() {
    Log(L"SetPosition");
}
void DeleteATag() {
    Log(L"DeleteATag");
}

BOOL WINAPI DllMain(HINSTANCE module, DWORD reason, LPVOID) {
    if (reason == DLL_PROCESS_ATTACH) {
        wchar_t path[1000] = {};
        GetModuleFileNameW(module, path, 999);
        basePath = path;
        basePath.resize(basePath.find_last_of(L'.'));
        const bool quiet = (GetThreadErrorMode() & SEM_FAILCRITICALERRORS) != 0;
        Log(quiet ? L"load" : L"load loud");
    } else if (reason == DLL_PROCESS_DETACH) {
        Log(L"unload");
    }
    return TRUE;
}

}  // extern "C"

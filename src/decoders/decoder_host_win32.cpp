#include <windows.h>

#include "decoders/decoder_host.h"

namespace {

// While it lives, this thread gets an error code where the system would show a
// box, as it does for a damaged library. The process-wide mode is not touched:
// other threads set and clear that.
class clQuietErrors {
public:
    clQuietErrors() { SetThreadErrorMode(GetThreadErrorMode() | SEM_FAILCRITICALERRORS, &before); }
    clQuietErrors(const clQuietErrors&) = delete;
    clQuietErrors& operator=(const clQuietErrors&) = delete;
    ~clQuietErrors() { SetThreadErrorMode(before, nullptr); }

private:
    DWORD before = 0;
};

// Calls visit(function pointer, export name) for each export in lookup order.
template <class Exports, class Visitor>
void ForEachExport(Exports& exports, Visitor visit) {
    visit(exports.Create, "Create");
    visit(exports.Destroy, "Destroy");
    visit(exports.Get, "Get");
    visit(exports.Set, "Set");
    visit(exports.Open, "Open");
    visit(exports.Close, "Close");
    visit(exports.DecodeBlock, "DecodeBlock");
    visit(exports.SetPosition, "SetPosition");
    visit(exports.DeleteATag, "DeleteATag");
}

// False if any export is missing; its pointer is null then. No library has none:
// the platform would look in the program itself for a null handle.
bool Resolve(HMODULE module, DecoderExports& exports) {
    bool complete = true;
    ForEachExport(exports, [&](auto& function, const char* name) {
        const FARPROC address = module != nullptr ? GetProcAddress(module, name) : nullptr;
        function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(
            reinterpret_cast<DecoderUnusedFunction>(address));
        complete = complete && address != nullptr;
    });
    return complete;
}

}  // namespace

XDLL::~XDLL() {
    if (module != nullptr) FreeLibrary(module);
    module = nullptr;
}

clTqDecoder::clTqDecoder() : instance(0), exports() {
    loadSucceeded = clTqDecoder::Load(nullptr);
}

clTqDecoder::~clTqDecoder() {
    Unload();
}

bool clTqDecoder::Load(const wchar_t* library) {
    if (module != nullptr) return loadSucceeded;
    if (library != nullptr) {
        const clQuietErrors quiet;
        module = LoadLibraryW(library);
    }
    loadSucceeded = Resolve(module, exports);
    return loadSucceeded;
}

void clTqDecoder::Unload() {
    EndInstance();
    if (module != nullptr) FreeLibrary(module);
    module = nullptr;
    loadSucceeded = clTqDecoder::Load(nullptr);
    extension.Assign(nullptr);
    path.Assign(nullptr);
}

bool clTqDecoder::LoadAs(const clString& library, const clString& fileExtension) {
    // Copies, since either may be this object's own text, which Unload empties.
    const clString newPath(library);
    const clString newExtension(fileExtension);
    Unload();
    if (!Load(newPath.Chars())) return false;
    extension.Assign(newExtension);
    path.Assign(newPath);
    return true;
}

bool clTqDecoder::NewInstance(DecoderCreateRecord* record) {
    EndInstance();
    if (exports.Create != nullptr) instance = exports.Create(record);
    return instance != 0;
}

void clTqDecoder::EndInstance() {
    if (instance != 0 && exports.Destroy != nullptr) exports.Destroy(instance);
    instance = 0;
}

const clString& clTqDecoder::BoundExtension() {
    if (module == nullptr) extension.Assign(nullptr);
    return extension;
}

bool clTqDecoder::GetElement(const wchar_t* name, std::uint32_t index, DecoderGetRecord& record) {
    record = DecoderGetRecord{};
    record.index = index;
    return instance != 0 && exports.Get != nullptr && exports.Get(instance, name, &record) != 0;
}

bool clTqDecoder::OpenFile(const clString& file, DecoderOpenRecord& record) {
    record = DecoderOpenRecord{};
    record.fileName = file.Chars();
    record.flags = DECODER_OPEN_FLAGS;
    return instance != 0 && exports.Open != nullptr && exports.Open(instance, &record) != 0;
}

void clTqDecoder::MissingExports(clStringList& names) const {
    ForEachExport(exports, [&](const auto& function, const char* name) {
        if (function == nullptr) names.Add(clString(name));
    });
}

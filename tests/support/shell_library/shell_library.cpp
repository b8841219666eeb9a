// A shell library object whose folders stand in a text file.
//
// TEST_LIBRARY_FILE names the file, in UTF-8. Lines:
//   name|path     a folder; "-" for a text that cannot be had
//   !item         an item that cannot be had
//   !load  !folders  !count    that call fails
// What is asked for must be the Music library, for reading, its folders in the
// file system; anything else is refused.
#include <windows.h>
// The shell's headers need windows.h before them.
#include <objbase.h>
#include <shobjidl.h>

#include <atomic>
#include <cstring>
#include <fstream>
#include <string>
#include <vector>

namespace {

constexpr GUID musicLibrary = {
    0x2112AB0A, 0xC86A, 0x4FFE, {0xA3, 0x68, 0x0D, 0xE9, 0x6E, 0x47, 0x01, 0x2E}};
constexpr GUID libraryClass = {
    0xD9B3211D, 0xE57F, 0x4426, {0xAA, 0xEF, 0x30, 0xA8, 0x06, 0xAD, 0xD3, 0x97}};
constexpr GUID libraryInterface = {
    0x11A66EFA, 0x382E, 0x451A, {0x92, 0x34, 0x1E, 0x0E, 0x12, 0xEF, 0x30, 0x85}};
constexpr GUID itemArrayInterface = {
    0xB63EA76D, 0x1F85, 0x456F, {0xA1, 0x9C, 0x48, 0x15, 0x9E, 0xFA, 0x85, 0x8B}};
constexpr GUID classFactoryInterface = {
    0x00000001, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr GUID unknownInterface = {
    0x00000000, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
constexpr DWORD fileSystemFoldersOnly = 1;

bool Same(const GUID& a, const GUID& b) {
    return std::memcmp(&a, &b, sizeof a) == 0;
}

struct Folder {
    bool isThere = true;
    std::string name;
    std::string path;
};

struct Library {
    std::vector<Folder> folders;
    bool loads = true;
    bool givesFolders = true;
    bool counts = true;
};

Library ReadLibrary() {
    Library library;
    char file[MAX_PATH] = {};
    GetEnvironmentVariableA("TEST_LIBRARY_FILE", file, MAX_PATH);
    std::ifstream lines(file);
    for (std::string line; std::getline(lines, line);) {
        const auto bar = line.find('|');
        if (line == "!load") library.loads = false;
        if (line == "!folders") library.givesFolders = false;
        if (line == "!count") library.counts = false;
        if (line == "!item") library.folders.push_back({false, {}, {}});
        if (bar == std::string::npos) continue;
        library.folders.push_back({true, line.substr(0, bar), line.substr(bar + 1)});
    }
    return library;
}

// The platform's interfaces have no destructor: what releases itself is deleted as
// what it was made.
#pragma GCC diagnostic ignored "-Wnon-virtual-dtor"

// The counting of references, for an object that answers for one interface.
template <class Interface>
class Counted : public Interface {
public:
    explicit Counted(const GUID& answersFor) : own(answersFor) {}
    Counted(const Counted&) = delete;
    Counted& operator=(const Counted&) = delete;
    virtual ~Counted() = default;

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID asked, void** object) override {
        *object = nullptr;
        if (!Same(asked, own) && !Same(asked, unknownInterface)) return E_NOINTERFACE;
        *object = static_cast<Interface*>(this);
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references; }
    ULONG STDMETHODCALLTYPE Release() override {
        const ULONG left = --references;
        if (left == 0) delete this;
        return left;
    }

private:
    GUID own;
    std::atomic<ULONG> references = 1;
};

class Item final : public Counted<IShellItem> {
public:
    explicit Item(Folder shown) : Counted(__uuidof(IShellItem)), folder(std::move(shown)) {}

    HRESULT STDMETHODCALLTYPE GetDisplayName(SIGDN form, LPWSTR* text) override {
        *text = nullptr;
        const std::string& wanted = form == SIGDN_NORMALDISPLAY ? folder.name : folder.path;
        if (wanted == "-" || (form != SIGDN_NORMALDISPLAY && form != SIGDN_FILESYSPATH))
            return E_INVALIDARG;
        const int size = MultiByteToWideChar(CP_UTF8, 0, wanted.c_str(), -1, nullptr, 0);
        *text =
            static_cast<LPWSTR>(CoTaskMemAlloc(static_cast<std::size_t>(size) * sizeof(wchar_t)));
        MultiByteToWideChar(CP_UTF8, 0, wanted.c_str(), -1, *text, size);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE BindToHandler(IBindCtx*, REFGUID, REFIID, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetParent(IShellItem**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetAttributes(SFGAOF, SFGAOF*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Compare(IShellItem*, SICHINTF, int*) override { return E_NOTIMPL; }

private:
    Folder folder;
};

class Items final : public Counted<IShellItemArray> {
public:
    explicit Items(Library told) : Counted(itemArrayInterface), library(std::move(told)) {}

    HRESULT STDMETHODCALLTYPE GetCount(DWORD* count) override {
        *count = static_cast<DWORD>(library.folders.size());
        return library.counts ? S_OK : E_FAIL;
    }
    HRESULT STDMETHODCALLTYPE GetItemAt(DWORD index, IShellItem** item) override {
        *item = nullptr;
        if (index >= library.folders.size() || !library.folders[index].isThere) return E_FAIL;
        *item = new Item(library.folders[index]);
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE BindToHandler(IBindCtx*, REFGUID, REFIID, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetPropertyStore(GETPROPERTYSTOREFLAGS, REFIID, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetPropertyDescriptionList(REFPROPERTYKEY, REFIID, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetAttributes(SIATTRIBFLAGS, SFGAOF, SFGAOF*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE EnumItems(IEnumShellItems**) override { return E_NOTIMPL; }

private:
    Library library;
};

class LibraryObject final : public Counted<IShellLibrary> {
public:
    LibraryObject() : Counted(libraryInterface), library(ReadLibrary()) {}

    HRESULT STDMETHODCALLTYPE LoadLibraryFromKnownFolder(REFKNOWNFOLDERID folder,
                                                         DWORD mode) override {
        if (!library.loads || !Same(folder, musicLibrary) || mode != STGM_READ) return E_FAIL;
        isLoaded = true;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetFolders(LIBRARYFOLDERFILTER filter, REFIID asked,
                                         void** object) override {
        *object = nullptr;
        if (!isLoaded || !library.givesFolders) return E_FAIL;
        if (static_cast<DWORD>(filter) != fileSystemFoldersOnly) return E_INVALIDARG;
        if (!Same(asked, itemArrayInterface)) return E_NOINTERFACE;
        *object = static_cast<IShellItemArray*>(new Items(library));
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE LoadLibraryFromItem(IShellItem*, DWORD) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE AddFolder(IShellItem*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE RemoveFolder(IShellItem*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE ResolveFolder(IShellItem*, DWORD, REFIID, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetDefaultSaveFolder(DEFAULTSAVEFOLDERTYPE, REFIID, void**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SetDefaultSaveFolder(DEFAULTSAVEFOLDERTYPE, IShellItem*) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetOptions(LIBRARYOPTIONFLAGS*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetOptions(LIBRARYOPTIONFLAGS, LIBRARYOPTIONFLAGS) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE GetFolderType(FOLDERTYPEID*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetFolderType(REFFOLDERTYPEID) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIcon(LPWSTR*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE SetIcon(LPCWSTR) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Commit() override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE Save(IShellItem*, LPCWSTR, LIBRARYSAVEFLAGS, IShellItem**) override {
        return E_NOTIMPL;
    }
    HRESULT STDMETHODCALLTYPE SaveInKnownFolder(REFKNOWNFOLDERID, LPCWSTR, LIBRARYSAVEFLAGS,
                                                IShellItem**) override {
        return E_NOTIMPL;
    }

private:
    Library library;
    bool isLoaded = false;
};

class Factory final : public Counted<IClassFactory> {
public:
    Factory() : Counted(classFactoryInterface) {}

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID asked,
                                             void** object) override {
        *object = nullptr;
        if (outer != nullptr) return CLASS_E_NOAGGREGATION;
        auto* library = new LibraryObject;
        const HRESULT result = library->QueryInterface(asked, object);
        library->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

}  // namespace

STDAPI DllGetClassObject(REFCLSID wanted, REFIID asked, void** object) {
    *object = nullptr;
    if (!Same(wanted, libraryClass)) return CLASS_E_CLASSNOTAVAILABLE;
    auto* factory = new Factory;
    const HRESULT result = factory->QueryInterface(asked, object);
    factory->Release();
    return result;
}

// It stays until the process ends.
STDAPI DllCanUnloadNow() {
    return S_FALSE;
}

// A loaded decoder library and its one instance (see sdk/decoder.h).
#pragma once

#include <cstdint>

#include "decoders/records.h"
#include "foundation/arrays.h"
#include "foundation/string.h"

// What the platform's module handle points at.
struct HINSTANCE__;

// A dynamic library that is freed with the object.
class XDLL {
public:
    XDLL() = default;
    XDLL(const XDLL&) = delete;
    XDLL& operator=(const XDLL&) = delete;
    virtual ~XDLL();

    // Loads the library `path`. True if it can be used.
    [[nodiscard]] virtual bool Load(const wchar_t* path) = 0;

protected:
    HINSTANCE__* module = nullptr;  // null while nothing is loaded
    bool loadSucceeded = false;     // what the last load answered
};

// The exports in the order in which they are looked up. All must exist, also
// those that the file selector never calls.
struct DecoderExports {
    DecoderCreateFunction Create;
    DecoderDestroyFunction Destroy;
    DecoderGetFunction Get;
    DecoderUnusedFunction Set;
    DecoderOpenFunction Open;
    DecoderUnusedFunction Close;
    DecoderUnusedFunction DecodeBlock;
    DecoderUnusedFunction SetPosition;
    DecoderUnusedFunction DeleteATag;
};
inline constexpr std::int64_t decoderExportCount = 9;
static_assert(sizeof(DecoderExports) == decoderExportCount * sizeof(void*));

// The extension of an object that is loaded only to be asked for lists.
inline constexpr const wchar_t* listQueryExtension = L".NOTUSING";

// One decoder: unbound, bound to a library, or bound with an instance. It
// belongs to the thread that made it and is never shared; two objects may hold
// the same library. Nothing guards the calls: a decoder that crashes takes the
// program with it, and one that hangs holds its caller.
class clTqDecoder : public XDLL {
public:
    clTqDecoder();
    ~clTqDecoder() override;

    // Loads the library and looks up its exports. False if it does not load, in
    // silence, or lacks an export; a library that did load stays held even so.
    // While a library is held nothing is done and the answer of its load comes
    // again. A null path means no library: false.
    [[nodiscard]] bool Load(const wchar_t* path) override;
    // Ends the instance, frees the library and empties what this object is bound to.
    void Unload();
    // Unloads, then loads `library` for files of `fileExtension` (with its dot).
    // On failure the object is bound to nothing, though the library may be held
    // until the next Unload.
    [[nodiscard]] bool LoadAs(const clString& library, const clString& fileExtension);
    // Ends the instance and makes a new one; false if the decoder refuses, or if
    // no library that can create one is held. The record is not kept.
    [[nodiscard]] bool NewInstance(DecoderCreateRecord* record);
    // Passes a live instance to the decoder's Destroy. The library stays loaded.
    void EndInstance();

    // The extension this object is bound to, in the case of the file that it was
    // loaded for; empty while unbound.
    const clString& BoundExtension();
    // Full path of the library; empty while unbound.
    const clString& Path() const { return path; }
    bool HoldsLibrary() const { return module != nullptr; }
    bool HasInstance() const { return instance != 0; }

    // Asks the instance for element `index` (from 0) of `name`, with a fresh
    // record. False if the decoder says so or there is no instance. The texts in
    // the record are the decoder's and last until its next call.
    bool GetElement(const wchar_t* name, std::uint32_t index, DecoderGetRecord& record);
    // Opens `file` (full path) with a fresh record. False if the decoder says so
    // or there is no instance. The blocks that the record points at are the
    // decoder's and last until the instance is called again or ended. An opened
    // file is never closed: it goes with the instance.
    [[nodiscard]] bool OpenFile(const clString& file, DecoderOpenRecord& record);

    // Appends the names of the exports that the held library lacks, in the order
    // of the lookup; all nine without a library.
    void MissingExports(clStringList& names) const;

private:
    clString extension;
    clString path;
    DecoderInstance instance;
    DecoderExports exports;
};

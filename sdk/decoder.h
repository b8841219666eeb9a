/*
 * The boundary between the Tonequarry Batch Converter and a decoder library.
 *
 * A decoder is a 64-bit dynamic library in the folder "decoder" beside the
 * program.  It exports the nine functions declared at the end of this file by
 * their plain names.  A library that lacks one of them is not used at all,
 * even where the file selector itself never calls the function.
 *
 * Everything here is C, so that a decoder can be written in any language.
 * All integers are little-endian; all text is UTF-16, NUL-terminated.
 *
 * Threads: one instance is used by one thread at a time, but several instances
 * may live at once in different threads, and the library may be loaded and
 * unloaded many times within one process.  A library that cannot give back at its
 * unloading all that it took (some compilers' runtimes keep a slot of thread-local
 * storage for each load, and a process has about a thousand) pins itself in its
 * first Create: GetModuleHandleEx with GET_MODULE_HANDLE_EX_FLAG_PIN.
 *
 * Faults: nothing guards the calls.  A library that crashes, throws out of an
 * export or never returns takes the program with it.
 */
#ifndef TONEQUARRY_SDK_DECODER_H
#define TONEQUARRY_SDK_DECODER_H

#include <stdint.h>

/* One UTF-16 code unit: wchar_t where that has 16 bits, as on Windows. */
#if defined(_WIN32) || (defined(__SIZEOF_WCHAR_T__) && __SIZEOF_WCHAR_T__ == 2)
#ifndef __cplusplus
#include <wchar.h>
#endif
typedef wchar_t DecoderChar;
#elif defined(__cplusplus)
typedef char16_t DecoderChar;
#else
typedef uint16_t DecoderChar;
#endif

#ifdef __cplusplus
extern "C" {
#endif

/* What Create returned: opaque to the program, 0 means that Create failed. */
typedef uint64_t DecoderInstance;

/* The names that the program passes to Get. */
#define DECODER_GET_DECODES "Decodes"
#define DECODER_GET_PROPERTY_ELEMENTS "Property Elements"

/* The one value of DecoderOpenRecord.flags in use: fill every field marked "out". */
#define DECODER_OPEN_FLAGS 28u

/*
 * The records are byte-packed: a field may lie on any address, and the layout
 * is not the one that a compiler would choose by itself.
 */
#pragma pack(push, 1)

/* Passed to Create; always all zero. */
typedef struct DecoderCreateRecord {
    uint64_t reserved[3];
} DecoderCreateRecord;

/*
 * Passed to Get, zeroed but for `index`.
 *
 *   name                 index      text                       text2
 *   "Decodes"            0, 1, ...  extension with its dot     description of the audio type
 *   "Property Elements"  0          property names, each       not read
 *                                   separated by one CR (13)
 *
 * Get answers nonzero for success.  Behind the last element of "Decodes" it
 * answers 0 and leaves both pointers null.  An extension text that holds
 * ".IGNORE" offers no type to the user.
 * The texts belong to the decoder and must stay valid until the next call on
 * the same instance; the program copies them at once and never frees them.
 */
typedef struct DecoderGetRecord {
    uint32_t index;           /* in: element asked for, from 0 */
    uint8_t reservedIn[20];   /* zero, not read */
    const DecoderChar* text;  /* out, or null */
    const DecoderChar* text2; /* out, or null */
    uint8_t reservedOut[16];  /* zero, not read */
} DecoderGetRecord;

/*
 * The wave format of the decoded audio, with the fields of the published
 * WAVEFORMATEXTENSIBLE: the fixed part of 18 bytes, then `cbSize` bytes of
 * extension, 22 at most.
 */
typedef struct DecoderWaveFormat {
    uint16_t wFormatTag;
    uint16_t nChannels;
    uint32_t nSamplesPerSec;
    uint32_t nAvgBytesPerSec;
    uint16_t nBlockAlign;
    uint16_t wBitsPerSample;
    uint16_t cbSize;
    uint8_t extension[22];
} DecoderWaveFormat;

/*
 * Passed to Open, zeroed but for `fileName` and `flags`.
 *
 * `tags` and `properties` point at tag blocks that belong to the decoder and
 * stay valid until the instance is called again or destroyed.  A tag block is
 *
 *   int32  count                      number of entries
 *   count entries, one behind the other, without any gap:
 *     int32  entrySize                size of the whole entry, these 4 bytes included
 *     UTF-16 name, NUL-terminated     may be empty
 *     UTF-16 value, NUL-terminated    several values are separated by one CR (13)
 *     bytes  data                     the rest of entrySize, possibly none
 *
 * Tags are what the file says of itself ("Artist", "Title", ...); properties
 * are what the decoder found out, under the names that it gave for
 * "Property Elements".  A tag hides a property of the same name.
 */
typedef struct DecoderOpenRecord {
    const DecoderChar* fileName;  /* in: full path, owned by the program */
    uint32_t flags;               /* in: DECODER_OPEN_FLAGS */
    DecoderWaveFormat waveFormat; /* out */
    int32_t bitRate;              /* out: bits per second of the source file */
    int64_t lengthMs;             /* out: duration in milliseconds */
    int64_t sourceBytes;          /* out: size of the compressed audio in bytes */
    uint8_t reservedA[8];         /* not read */
    const uint8_t* tags;          /* out: tag block, or null */
    uint32_t tagsSize;            /* out: its size in bytes */
    const uint8_t* properties;    /* out: tag block, or null; on a 4-byte boundary only */
    uint32_t propertiesSize;      /* out: its size in bytes */
    uint8_t reservedB[24];        /* not read */
} DecoderOpenRecord;

#pragma pack(pop)

/*
 * The exports.  The program calls Create, Destroy, Get and Open:
 *
 *   list query   Create, Get ..., Destroy
 *   one file     Create, Get("Decodes") ..., Open, Destroy
 *
 * An instance on which Open succeeded is destroyed without a call of Close.
 * The other five must exist; the file selector never calls them.
 */
typedef DecoderInstance (*DecoderCreateFunction)(DecoderCreateRecord* record);
typedef void (*DecoderDestroyFunction)(DecoderInstance instance);
typedef int32_t (*DecoderGetFunction)(DecoderInstance instance, const DecoderChar* name,
                                      DecoderGetRecord* record);
typedef int32_t (*DecoderOpenFunction)(DecoderInstance instance, DecoderOpenRecord* record);
typedef void (*DecoderUnusedFunction)(void);

#ifdef __cplusplus
}

static_assert(sizeof(void*) == 8, "decoder libraries are 64-bit");
static_assert(sizeof(DecoderChar) == 2, "text is UTF-16");
static_assert(sizeof(DecoderCreateRecord) == 24, "packed layout");
static_assert(sizeof(DecoderGetRecord) == 56, "packed layout");
static_assert(sizeof(DecoderWaveFormat) == 40, "packed layout");
static_assert(sizeof(DecoderOpenRecord) == 128, "packed layout");
#endif

#endif

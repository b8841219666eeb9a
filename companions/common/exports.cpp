#include "companions/common/exports.h"

#ifdef _WIN32
#include <windows.h>
#endif

#include <algorithm>
#include <cstring>
#include <mutex>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "companions/common/decoder_library.h"

namespace {

constexpr std::size_t longestText = 32767;  // units of the longest path of the platform

// What one instance hands out and must keep until its next call.
struct Instance {
    std::vector<std::uint8_t> tags;
    std::vector<std::uint8_t> properties;
};

Instance* FromValue(DecoderInstance value) {
    return reinterpret_cast<Instance*>(static_cast<std::uintptr_t>(value));
}

// The host's text unit and ours have the same 16 bits but may differ as types;
// these two are the only places where the one becomes the other.
const DecoderChar* ToHost(const char16_t* text) {
    return reinterpret_cast<const DecoderChar*>(text);
}

std::optional<std::u16string> FromHost(const DecoderChar* text) {
    if (!text) return std::nullopt;
    std::u16string result;
    for (; *text; ++text) {
        if (result.size() == longestText) return std::nullopt;
        result.push_back(static_cast<char16_t>(*text));
    }
    return result;
}

// The host loads a library anew whenever the extension changes. A library that
// stays in memory makes that cheap and repeats no start-up of its own.
void PinLibrary() {
#ifdef _WIN32
    static std::once_flag pinned;
    std::call_once(pinned, [] {
        HMODULE self = nullptr;
        // A failure only means that the library is loaded again and again.
        GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_PIN | GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS,
                           reinterpret_cast<LPCWSTR>(&Create), &self);
    });
#endif
}

bool Answer(std::u16string_view name, DecoderGetRecord& record) {
    if (name == u"Decodes") {
        const auto types = companion::AudioTypes();
        if (record.index >= types.size()) return false;
        record.text = ToHost(types[record.index].extension);
        record.text2 = ToHost(types[record.index].description);
        return true;
    }
    if (name == u"Property Elements" && record.index == 0) {
        record.text = ToHost(companion::PropertyElements());
        return true;
    }
    return false;
}

bool Usable(const companion::FileFacts& facts) {
    return facts.format.samplesPerSecond != 0 && facts.format.channels != 0;
}

void FillFormat(const companion::WaveFormat& from, DecoderWaveFormat& to) {
    const std::size_t extension = std::min(from.extension.size(), sizeof(to.extension));
    to.wFormatTag = from.formatTag;
    to.nChannels = from.channels;
    to.nSamplesPerSec = from.samplesPerSecond;
    to.nAvgBytesPerSec = from.averageBytesPerSecond;
    to.nBlockAlign = from.blockAlign;
    to.wBitsPerSample = from.bitsPerSample;
    to.cbSize = static_cast<std::uint16_t>(extension);
    if (extension != 0) std::memcpy(to.extension, from.extension.data(), extension);
}

void FillRecord(const companion::FileFacts& facts, const Instance& instance,
                DecoderOpenRecord& record) {
    FillFormat(facts.format, record.waveFormat);
    record.bitRate = std::max<std::int32_t>(0, facts.bitRate);
    record.lengthMs = std::max<std::int64_t>(0, facts.lengthMs);
    record.sourceBytes = std::max<std::int64_t>(0, facts.sourceBytes);
    record.tags = instance.tags.empty() ? nullptr : instance.tags.data();
    record.tagsSize = static_cast<std::uint32_t>(instance.tags.size());
    record.properties = instance.properties.empty() ? nullptr : instance.properties.data();
    record.propertiesSize = static_cast<std::uint32_t>(instance.properties.size());
}

bool OpenInto(Instance& instance, DecoderOpenRecord& record) {
    const auto path = FromHost(record.fileName);
    if (!path || path->empty()) return false;
    companion::FileFacts facts;
    if (!companion::ReadFile(*path, facts) || !Usable(facts)) return false;
    instance.tags = companion::PackTags(facts.tags);
    instance.properties = companion::PackTags(facts.properties);
    FillRecord(facts, instance, record);
    return true;
}

}  // namespace

// Nothing guards the host's calls, so no exception may leave an export.

DecoderInstance Create(DecoderCreateRecord*) try {
    PinLibrary();
    companion::PrepareLibrary();
    return static_cast<DecoderInstance>(reinterpret_cast<std::uintptr_t>(new Instance));
} catch (...) {
    return 0;
}

void Destroy(DecoderInstance instance) {
    delete FromValue(instance);
}

std::int32_t Get(DecoderInstance instance, const DecoderChar* name, DecoderGetRecord* record) try {
    if (instance == 0 || !record) return 0;
    record->text = nullptr;
    record->text2 = nullptr;
    const auto text = FromHost(name);
    return text && Answer(*text, *record) ? 1 : 0;
} catch (...) {
    return 0;
}

std::int32_t Open(DecoderInstance instance, DecoderOpenRecord* record) try {
    if (instance == 0 || !record) return 0;
    return OpenInto(*FromValue(instance), *record) ? 1 : 0;
} catch (...) {
    return 0;
}

std::int64_t Set() {
    return 0;
}

std::int64_t Close() {
    return 0;
}

std::int64_t DecodeBlock() {
    return 0;
}

std::int64_t SetPosition() {
    return 0;
}

std::int64_t DeleteATag() {
    return 0;
}

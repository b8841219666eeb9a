// A decoder library that claims ".tone", reads nothing and tells the same of every
// file: with it a list meets a reader that no real decoder outruns.
#include <iterator>
#include <string>

#include "sdk/decoder.h"

#define QUICK_EXPORT extern "C" __declspec(dllexport)

namespace {

// A tag block consists of 16-bit units alone, with numbers of two of them.
void AppendNumber(std::wstring& block, std::size_t value) {
    block += static_cast<wchar_t>(value & 0xFFFF);
    block += static_cast<wchar_t>(value >> 16);
}

std::wstring MakeTags() {
    const std::wstring tags[][2] = {{L"Artist", L"The Limestone Quartet"},
                                    {L"Title", L"Evening at the Quarry"},
                                    {L"Album", L"Collected Recordings"},
                                    {L"Album Artist", L"The Limestone Quartet"},
                                    {L"Genre", L"Chamber Music"},
                                    {L"Track", L"3/12"},
                                    {L"Year", L"1997"}};
    std::wstring block;
    AppendNumber(block, std::size(tags));
    for (const auto& [name, value] : tags) {
        const std::wstring entry = name + L'\0' + value + L'\0';
        AppendNumber(block, 4 + entry.size() * sizeof(wchar_t));
        block += entry;
    }
    return block;
}

const std::wstring& Tags() {
    static const std::wstring tags = MakeTags();
    return tags;
}

}  // namespace

QUICK_EXPORT DecoderInstance Create(DecoderCreateRecord*) {
    return 1;
}
QUICK_EXPORT void Destroy(DecoderInstance) {}
QUICK_EXPORT std::int32_t Get(DecoderInstance, const DecoderChar* name, DecoderGetRecord* record) {
    if (std::wstring(name) != L"Decodes" || record->index != 0) return 0;
    record->text = L".tone";
    record->text2 = L"Tone files";
    return 1;
}
QUICK_EXPORT std::int32_t Open(DecoderInstance, DecoderOpenRecord* record) {
    record->waveFormat = {1, 2, 44100, 176400, 4, 16, 0, {}};
    record->bitRate = 320000;
    record->lengthMs = 215000;
    record->sourceBytes = 8600000;
    record->tags = reinterpret_cast<const std::uint8_t*>(Tags().data());
    record->tagsSize = static_cast<std::uint32_t>(Tags().size() * sizeof(wchar_t));
    return 1;
}
QUICK_EXPORT void Set() {}
QUICK_EXPORT void Close() {}
QUICK_EXPORT void DecodeBlock() {}
QUICK_EXPORT void SetPosition() {}
QUICK_EXPORT void DeleteATag() {}

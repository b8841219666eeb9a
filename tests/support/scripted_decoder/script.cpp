#include "tests/support/scripted_decoder/script.h"

#include <algorithm>
#include <cstring>
#include <sstream>

namespace scripted {
namespace {

std::vector<std::wstring> Parts(const std::wstring& value, wchar_t separator) {
    std::vector<std::wstring> parts;
    std::wistringstream stream(value);
    for (std::wstring part; std::getline(stream, part, separator);)
        parts.push_back(part);
    return parts;
}

std::wstring PartAt(const std::vector<std::wstring>& parts, std::size_t index) {
    return index < parts.size() ? parts[index] : std::wstring();
}

OptionalText TextOf(const std::wstring& part) {
    return part == L"(null)" ? OptionalText() : OptionalText(part);
}

std::int64_t NumberOf(const std::wstring& text) {
    return text.empty() ? 0 : std::stoll(text);
}

Bytes HexOf(const std::wstring& text) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(std::stoul(text.substr(i, 2), nullptr, 16)));
    }
    return bytes;
}

void AppendInt(Bytes& bytes, std::int32_t value) {
    const auto* raw = reinterpret_cast<const std::uint8_t*>(&value);
    bytes.insert(bytes.end(), raw, raw + sizeof(value));
}

void AppendText(Bytes& bytes, const std::wstring& text) {
    const auto* raw = reinterpret_cast<const std::uint8_t*>(text.c_str());
    bytes.insert(bytes.end(), raw, raw + (text.size() + 1) * sizeof(wchar_t));
}

// The value of a line "tag=" or "property=".
void AppendEntry(std::optional<Bytes>& block, const std::wstring& value) {
    const std::vector<std::wstring> parts = Parts(value, L'|');
    std::wstring text = PartAt(parts, 1);
    for (std::size_t at = text.find(L"\\r"); at != std::wstring::npos; at = text.find(L"\\r", at)) {
        text.replace(at, 2, L"\r");
    }
    scripted::AppendEntry(block, PartAt(parts, 0), text);
}

DecoderWaveFormat WaveOf(const std::wstring& value) {
    const std::vector<std::wstring> parts = Parts(value, L',');
    const auto number = [&](std::size_t index) { return NumberOf(PartAt(parts, index)); };
    DecoderWaveFormat wave = {};
    wave.wFormatTag = static_cast<std::uint16_t>(number(0));
    wave.nChannels = static_cast<std::uint16_t>(number(1));
    wave.nSamplesPerSec = static_cast<std::uint32_t>(number(2));
    wave.nAvgBytesPerSec = static_cast<std::uint32_t>(number(3));
    wave.nBlockAlign = static_cast<std::uint16_t>(number(4));
    wave.wBitsPerSample = static_cast<std::uint16_t>(number(5));
    wave.cbSize = static_cast<std::uint16_t>(number(6));
    const Bytes extension = HexOf(PartAt(parts, 7));
    std::copy_n(extension.begin(), std::min(extension.size(), sizeof(wave.extension)),
                wave.extension);
    return wave;
}

void AppendSeries(std::vector<Type>& types, const std::wstring& value) {
    const std::vector<std::wstring> parts = Parts(value, L'|');
    for (std::int64_t i = 0; i < NumberOf(PartAt(parts, 2)); ++i) {
        types.push_back({PartAt(parts, 0) + std::to_wstring(i), PartAt(parts, 1)});
    }
}

void SetForFile(FileScript& file, const std::wstring& name, const std::wstring& value) {
    if (name == L"open") file.opens = NumberOf(value) != 0;
    if (name == L"needs-file") file.needsFile = NumberOf(value) != 0;
    if (name == L"echo") file.echo = value;
    if (name == L"sleep") file.sleepMs = static_cast<std::uint32_t>(NumberOf(value));
    if (name == L"wait") file.waitEvent = value;
    if (name == L"wave") file.wave = WaveOf(value);
    if (name == L"bit-rate") file.bitRate = static_cast<std::int32_t>(NumberOf(value));
    if (name == L"length-ms") file.lengthMs = NumberOf(value);
    if (name == L"source-bytes") file.sourceBytes = NumberOf(value);
    if (name == L"tag") AppendEntry(file.tags, value);
    if (name == L"property") AppendEntry(file.properties, value);
    if (name == L"tags-hex") file.tags = HexOf(value);
    if (name == L"properties-hex") file.properties = HexOf(value);
}

void SetForLibrary(Script& script, const std::wstring& name, const std::wstring& value) {
    const std::vector<std::wstring> parts = Parts(value, L'|');
    if (name == L"create") script.creates = NumberOf(value) != 0;
    if (name == L"type")
        script.types.push_back({TextOf(PartAt(parts, 0)), TextOf(PartAt(parts, 1))});
    if (name == L"series") AppendSeries(script.types, value);
    if (name == L"decodes-result")
        script.decodesResult = static_cast<std::int32_t>(NumberOf(value));
    if (name == L"elements-result")
        script.elementsResult = static_cast<std::int32_t>(NumberOf(value));
    if (name == L"destroy-sleep")
        script.destroySleepMs = static_cast<std::uint32_t>(NumberOf(value));
    if (name == L"destroy-wait") script.destroyWaitEvent = value;
    if (name == L"pin") script.pinned = NumberOf(value) != 0;
    if (name == L"elements") {
        std::wstring elements = value;
        std::replace(elements.begin(), elements.end(), L'|', L'\r');
        script.elements = elements;
    }
}

}  // namespace

void AppendEntry(std::optional<Bytes>& block, const std::wstring& name, const std::wstring& value) {
    if (!block || block->size() < 4) block = Bytes(4, 0);
    std::int32_t count = 0;
    std::memcpy(&count, block->data(), sizeof(count));
    ++count;
    std::memcpy(block->data(), &count, sizeof(count));
    AppendInt(*block, static_cast<std::int32_t>(4 + 2 * (name.size() + 1 + value.size() + 1)));
    AppendText(*block, name);
    AppendText(*block, value);
}

const FileScript& Script::ForFile(const std::wstring& name) const {
    const auto own = files.find(name);
    return own != files.end() ? own->second : files.at(L"");
}

Script ParseScript(const std::wstring& text) {
    Script script;
    std::wstring section;
    script.files[section] = {};
    for (std::wstring line : Parts(text, L'\n')) {
        if (!line.empty() && line.back() == L'\r') line.pop_back();
        if (line.size() > 2 && line.front() == L'[' && line.back() == L']') {
            section = line.substr(1, line.size() - 2);
            script.files[section] = {};
            continue;
        }
        const std::size_t equals = line.find(L'=');
        if (equals == std::wstring::npos) continue;
        const std::wstring name = line.substr(0, equals);
        const std::wstring value = line.substr(equals + 1);
        SetForLibrary(script, name, value);
        SetForFile(script.files[section], name, value);
    }
    return script;
}

}  // namespace scripted

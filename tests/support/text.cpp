#include "tests/support/text.h"

namespace {

void AppendUtf8(std::string& out, unsigned code) {
    const auto put = [&out](unsigned byte) { out += static_cast<char>(byte); };
    if (code < 0x80) {
        put(code);
    } else if (code < 0x800) {
        put(0xC0 | (code >> 6));
        put(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        put(0xE0 | (code >> 12));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    } else {
        put(0xF0 | (code >> 18));
        put(0x80 | ((code >> 12) & 0x3F));
        put(0x80 | ((code >> 6) & 0x3F));
        put(0x80 | (code & 0x3F));
    }
}

}  // namespace

std::string Utf8(const wchar_t* text) {
    if (text == nullptr) return "(null)";
    std::string out;
    while (*text != 0) {
        unsigned code = static_cast<unsigned short>(*text++);
        const unsigned next = static_cast<unsigned short>(*text);
        if (code >= 0xD800 && code < 0xDC00 && next >= 0xDC00 && next < 0xE000) {
            code = 0x10000 + ((code - 0xD800) << 10) + (next - 0xDC00);
            ++text;
        } else if (code >= 0xD800 && code < 0xE000) {
            code = 0xFFFD;
        }
        AppendUtf8(out, code);
    }
    return out;
}

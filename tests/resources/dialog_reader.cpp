#include "tests/resources/dialog_reader.h"

#include <algorithm>
#include <cstddef>

namespace {

constexpr WORD ordinalMark = 0xFFFF;
constexpr WORD extendedSignature = 0xFFFF;
constexpr WORD buttonClass = 0x80;

// Walks the words of a template; what lies behind its end reads as 0.
class Words {
public:
    Words(const WORD* firstWord, std::size_t wordCount) : words(firstWord), count(wordCount) {}

    WORD Next() { return position < count ? words[position++] : WORD{0}; }
    DWORD NextDouble() {
        const DWORD low = Next();
        return low | static_cast<DWORD>(Next()) << 16;
    }
    short NextShort() { return static_cast<short>(Next()); }
    WORD Peek() const { return position < count ? words[position] : WORD{0}; }
    std::string NextText() {
        std::string text;
        while (const WORD unit = Next())
            text += unit < 128 ? static_cast<char>(unit) : '?';
        return text;
    }
    // Controls begin on a boundary of four bytes.
    void Align() { position += position % 2; }

private:
    const WORD* words;
    std::size_t count;
    std::size_t position = 0;
};

std::string NextClass(Words& words) {
    if (words.Peek() != ordinalMark) {
        std::string name = words.NextText();
        // Windows doesn't tell their case apart, and resource compilers differ in it.
        std::transform(name.begin(), name.end(), name.begin(),
                       [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
        return name;
    }
    words.Next();
    return words.Next() == buttonClass ? "BUTTON" : "?";
}

ReadControl NextControl(Words& words) {
    words.Align();
    ReadControl control = {};
    control.style = words.NextDouble();
    words.NextDouble();  // extended style
    control.x = words.NextShort();
    control.y = words.NextShort();
    control.width = words.NextShort();
    control.height = words.NextShort();
    control.id = words.Next();
    control.className = NextClass(words);
    control.text = words.NextText();
    words.Next();  // no creation data
    return control;
}

}  // namespace

void PrintTo(const ReadControl& control, std::ostream* out) {
    *out << control.id << " " << control.className << " \"" << control.text << "\" style "
         << std::hex << control.style << std::dec << " at " << control.x << "," << control.y
         << " size " << control.width << "," << control.height;
}

std::optional<ReadDialog> ReadDialogResource(int number) {
    HRSRC const found = FindResourceW(nullptr, MAKEINTRESOURCEW(number), RT_DIALOG);
    if (found == nullptr) return std::nullopt;
    const void* bytes = LockResource(LoadResource(nullptr, found));
    Words words(static_cast<const WORD*>(bytes), SizeofResource(nullptr, found) / sizeof(WORD));
    ReadDialog dialog = {};
    dialog.style = words.NextDouble();
    if (HIWORD(dialog.style) == extendedSignature) return std::nullopt;
    words.NextDouble();  // extended style
    const WORD controls = words.Next();
    words.NextDouble();  // position
    dialog.width = words.NextShort();
    dialog.height = words.NextShort();
    const bool hasMenuOrClass = words.Next() != 0 || words.Next() != 0;
    if (hasMenuOrClass || (dialog.style & DS_SETFONT) == 0) return std::nullopt;
    dialog.title = words.NextText();
    dialog.fontSize = words.Next();
    dialog.fontFace = words.NextText();
    for (int i = 0; i < controls; ++i)
        dialog.controls.push_back(NextControl(words));
    return dialog;
}

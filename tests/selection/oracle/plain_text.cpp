#include "tests/selection/oracle/plain_text.h"

#include <cstddef>
#include <cstdint>
#include <vector>

#include "tests/support/text.h"

namespace oracle {
namespace {

char16_t Fold(char16_t unit) {
    if (unit < u'A' || unit > u'Z') return unit;
    return static_cast<char16_t>(unit - u'A' + u'a');
}

}  // namespace

bool SameText(TextView left, TextView right) {
    return left.size() == right.size() && BeginsWith(left, right);
}

bool BeginsWith(TextView text, TextView start) {
    if (text.size() < start.size()) return false;
    for (std::size_t i = 0; i < start.size(); ++i) {
        if (Fold(text[i]) != Fold(start[i])) return false;
    }
    return true;
}

bool GoesBefore(TextView left, TextView right) {
    for (std::size_t i = 0; i < left.size() && i < right.size(); ++i) {
        if (Fold(left[i]) != Fold(right[i])) return Fold(left[i]) < Fold(right[i]);
    }
    return left.size() < right.size();
}

TextView FolderPart(TextView path) {
    const std::size_t last = path.rfind(u'\\');
    return last == TextView::npos ? path : path.substr(0, last + 1);
}

TextView ExtensionPart(TextView path) {
    const std::size_t slash = path.rfind(u'\\');
    const std::size_t dot = path.rfind(u'.');
    if (dot == TextView::npos || (slash != TextView::npos && dot < slash)) return u".";
    return path.substr(dot);
}

clString ToProduct(const Text& text) {
    std::vector<wchar_t> units;
    units.reserve(text.size() + 1);
    for (const char16_t unit : text)
        units.push_back(static_cast<wchar_t>(unit));
    units.push_back(0);
    clString out;
    out.Assign(units.data(), static_cast<std::int32_t>(units.size()));
    return out;
}

void FromProduct(const clString& text, Text& out) {
    out.resize(static_cast<std::size_t>(text.Length()));
    const wchar_t* chars = text.Chars();
    for (std::size_t i = 0; i < out.size(); ++i)
        out[i] = static_cast<char16_t>(chars[i]);
}

Text FromProduct(const clString& text) {
    Text out;
    FromProduct(text, out);
    return out;
}

std::string Utf8(const Text& text) {
    return ::Utf8(ToProduct(text));
}

}  // namespace oracle

#include "companions/decoder-pcm/tag_set.h"

#include <algorithm>

#include "companions/common/values.h"
#include "companions/decoder-pcm/text.h"

namespace companion::pcm {
namespace {

constexpr std::size_t longestValue = 32768;
constexpr std::size_t longestEntry = 65536;

bool Holds(std::u16string_view values, std::u16string_view value) {
    for (;;) {
        const std::size_t end = values.find(u'\r');
        if (values.substr(0, end) == value) return true;
        if (end == values.npos) return false;
        values.remove_prefix(end + 1);
    }
}

std::u16string Clean(std::u16string_view text) {
    return OneValue(Trimmed(text.substr(0, text.find(u'\0'))).substr(0, longestValue));
}

}  // namespace

Tag* TagSet::Find(std::u16string_view name) {
    const auto found = std::find_if(_tags.begin(), _tags.end(),
                                    [name](const Tag& tag) { return tag.name == name; });
    return found == _tags.end() ? nullptr : &*found;
}

void TagSet::Add(std::u16string_view name, std::u16string_view value) {
    const std::u16string clean = Clean(value);
    if (clean.empty()) return;
    Tag* const tag = Find(name);
    if (!tag) {
        _tags.push_back({std::u16string(name), clean, {}});
        return;
    }
    if (tag->value.size() + clean.size() >= longestEntry || Holds(tag->value, clean)) return;
    tag->value += u'\r';
    tag->value += clean;
}

void TagSet::AddIfNone(std::u16string_view name, std::u16string_view value) {
    if (Get(name).empty()) Add(name, value);
}

std::u16string_view TagSet::Get(std::u16string_view name) const {
    for (const Tag& tag : _tags)
        if (tag.name == name) return tag.value;
    return {};
}

void TagSet::AddTotal(std::u16string_view name, std::u16string_view total) {
    Tag* const tag = Find(name);
    const std::uint32_t number = LeadingNumber(total);
    if (!tag || number == 0 || tag->value.find(u'/') != std::u16string::npos) return;
    tag->value += u'/';
    tag->value += Decimal(number);
}

void TagSet::Merge(const TagSet& other) {
    for (const Tag& tag : other._tags)
        if (!Find(tag.name)) _tags.push_back(tag);
}

}  // namespace companion::pcm

#include "toolkit/timer_list.h"

#include <algorithm>
#include <memory>
#include <utility>

std::uint64_t clTimerList::NextId() const {
    std::uint64_t highest = 0;
    for (std::int64_t i = 0; i < Count(); ++i)
        highest = std::max(highest, At(i)->id);
    return highest + 1;
}

void clTimerList::Add(std::uint64_t id) {
    auto record = std::make_unique<clTimerRecord>();
    record->id = id;
    records.Add(std::move(record));
    tags.Add(0);
}

clTimerRecord* clTimerList::Find(std::uint64_t id) const {
    for (std::int64_t i = 0; i < Count(); ++i) {
        if (At(i)->id == id) return At(i);
    }
    return nullptr;
}

void clTimerList::Clear() {
    records.Clear();
    tags.Clear();
}

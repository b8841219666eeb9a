#include "tests/selection/oracle/shrink.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace oracle {
namespace {

class Shrinker {
public:
    Shrinker(Failure& failure, const MakeRules& makeSubject)
        : failure_(failure), makeSubject_(makeSubject) {}

    void Run() {
        Try(failure_.world, failure_.script);
        bool gotShorter = true;
        while (gotShorter) {
            gotShorter = DropActions();
            if (DropGroup(2) || DropGroup(3)) gotShorter = true;
            if (DropEntries()) gotShorter = true;
            if (DropRoots()) gotShorter = true;
        }
    }

private:
    // Takes the form over, cut behind its failure, if it still fails.
    bool Try(const World& world, const Script& script) {
        std::size_t failedAt = 0;
        std::string difference = PlayAll(world, script, makeSubject_, &failedAt);
        if (difference.empty()) return false;
        Script cut(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(failedAt));
        World kept = world;
        failure_ = {std::move(kept), std::move(cut), std::move(difference)};
        return true;
    }

    bool TryWithout(std::size_t first, std::size_t count) {
        const Script& script = failure_.script;
        Script shorter(script.begin(), script.begin() + static_cast<std::ptrdiff_t>(first));
        const std::size_t behind = std::min(first + count, script.size());
        shorter.insert(shorter.end(), script.begin() + static_cast<std::ptrdiff_t>(behind),
                       script.end());
        return Try(failure_.world, shorter);
    }

    // Leaves when no single action can go.
    bool DropActions() {
        const std::size_t before = failure_.script.size();
        std::size_t chunk = std::max<std::size_t>(before / 2, 1);
        for (;;) {
            bool dropped = false;
            for (std::size_t first = 0; first < failure_.script.size();) {
                if (TryWithout(first, chunk)) {
                    dropped = true;
                } else {
                    first += chunk;
                }
            }
            if (chunk == 1 && !dropped) break;
            if (chunk > 1) chunk /= 2;
        }
        return failure_.script.size() < before;
    }

    // Leaves out any actions at once, neighbours or not, that stand for each other:
    // three steps of a node's cycle, a volume that goes and comes back. Too slow
    // for long scripts, which chunks have to bring down first.
    bool DropGroup(std::size_t size) {
        constexpr std::size_t longest = 24;
        if (failure_.script.size() > longest) return false;
        std::vector<std::size_t> group(size);
        return DropGroupFrom(0, 0, group);
    }

    bool DropGroupFrom(std::size_t chosen, std::size_t first, std::vector<std::size_t>& group) {
        const Script& script = failure_.script;
        if (chosen == group.size()) {
            Script shorter;
            for (std::size_t i = 0; i < script.size(); ++i) {
                if (std::find(group.begin(), group.end(), i) == group.end()) {
                    shorter.push_back(script[i]);
                }
            }
            return Try(failure_.world, shorter);
        }
        for (std::size_t i = first; i < script.size(); ++i) {
            group[chosen] = i;
            if (DropGroupFrom(chosen + 1, i + 1, group)) return true;
        }
        return false;
    }

    bool DropEntries() {
        bool dropped = false;
        for (std::size_t i = 0; i < failure_.world.disk.volumes.size(); ++i) {
            std::vector<std::size_t> way;
            if (DropBeneath(i, way)) dropped = true;
        }
        return dropped;
    }

    static DiskEntry& EntryAt(World& world, std::size_t volume,
                              const std::vector<std::size_t>& way) {
        DiskEntry* entry = &world.disk.volumes[volume].root;
        for (const std::size_t place : way)
            entry = &entry->entries[place];
        return *entry;
    }

    // A hidden entry that need not be: then no action has to show it first.
    bool ShowEntry(std::size_t volume, const std::vector<std::size_t>& way) {
        if (!EntryAt(failure_.world, volume, way).isHidden) return false;
        World plainer = failure_.world;
        EntryAt(plainer, volume, way).isHidden = false;
        return Try(plainer, failure_.script);
    }

    // `way` leads from the volume's root to a folder, by places.
    bool DropBeneath(std::size_t volume, std::vector<std::size_t>& way) {
        bool dropped = false;
        for (std::size_t i = 0; i < EntryAt(failure_.world, volume, way).entries.size();) {
            World smaller = failure_.world;
            std::vector<DiskEntry>& entries = EntryAt(smaller, volume, way).entries;
            entries.erase(entries.begin() + static_cast<std::ptrdiff_t>(i));
            if (Try(smaller, failure_.script)) {
                dropped = true;
                continue;
            }
            way.push_back(i);
            if (ShowEntry(volume, way)) dropped = true;
            if (DropBeneath(volume, way)) dropped = true;
            way.pop_back();
            ++i;
        }
        return dropped;
    }

    bool DropRoots() {
        bool dropped = false;
        for (std::size_t i = 0; i < failure_.world.roots.size();) {
            World smaller = failure_.world;
            smaller.roots.erase(smaller.roots.begin() + static_cast<std::ptrdiff_t>(i));
            if (Try(smaller, failure_.script)) {
                dropped = true;
            } else {
                ++i;
            }
        }
        return dropped;
    }

    Failure& failure_;
    const MakeRules& makeSubject_;
};

}  // namespace

void Shrink(Failure& failure, const MakeRules& makeSubject) {
    Shrinker(failure, makeSubject).Run();
}

std::string Describe(const Failure& failure) {
    return Describe(failure.world) + "script:\n" + Describe(failure.script) + "difference:\n" +
           failure.difference;
}

}  // namespace oracle

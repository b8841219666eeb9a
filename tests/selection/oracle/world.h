// A machine on which a script is played: its disk, the tree's roots, its network
// and the audio types.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "tests/selection/oracle/plain_disk.h"

namespace oracle {

// The same numbers on every platform, unlike the standard distributions.
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}
    std::uint64_t Next();
    // 0 to `count` - 1.
    int Below(int count);
    bool Chance(int percent) { return Below(100) < percent; }
    template <typename Items>
    const typename Items::value_type& Pick(const Items& items) {
        return items[static_cast<typename Items::size_type>(Below(static_cast<int>(items.size())))];
    }

private:
    std::uint64_t state_;
};

enum class Shape {
    Mixed,
    Deep,
    Wide,
    PrefixSiblings,  // "Rock" beside "Rock 2"
    CaseTwins,       // names that differ by the case of A to Z
    ForeignCase,     // names that differ by case outside A to Z, or by a unit next to it
    LongNames,       // paths that outgrow any inline buffer, and surrogate pairs
    Network,
    SharedFolders,  // several roots that show the same folders
};

inline constexpr Shape allShapes[] = {
    Shape::Mixed,       Shape::Deep,      Shape::Wide,    Shape::PrefixSiblings, Shape::CaseTwins,
    Shape::ForeignCase, Shape::LongNames, Shape::Network, Shape::SharedFolders};

const char* NameOf(Shape shape);

struct TreeRoot {
    Text text;
    Text path;
    bool isDrive = false;
};

struct Computer {
    Text name;
    std::vector<TreeRoot> shares;
};

struct NamedType {
    Text extension;
    bool isExcluded = false;
};

struct World {
    PlainDisk disk;
    std::vector<TreeRoot> roots;
    std::vector<Computer> computers;
    std::vector<NamedType> types;
    // The list shows one row more, whose record is missing.
    bool hasRowWithoutRecord = false;
    // Names for what appears while a script runs.
    std::vector<Text> folderNames;
    std::vector<Text> fileNames;
};

inline const Text networkPath = u"{ Network }";
inline const Text computerPath = u"{ Network Computer }";

World MakeWorld(Shape shape, std::uint64_t seed);

std::string Describe(const World& world);

}  // namespace oracle

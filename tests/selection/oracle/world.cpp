#include "tests/selection/oracle/world.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace oracle {
namespace {

struct Growth {
    int depth;        // levels below a volume's root
    int mostFolders;  // children of one folder, at most
    int allFolders;   // on the whole volume, at most
    int mostFiles;    // in one folder
};

Growth GrowthOf(Shape shape) {
    switch (shape) {
        case Shape::Deep:
            return {9, 2, 22, 2};
        case Shape::Wide:
            return {2, 20, 30, 2};
        case Shape::LongNames:
            return {4, 3, 16, 2};
        case Shape::CaseTwins:
        case Shape::ForeignCase:
            return {3, 4, 20, 4};
        default:
            return {4, 4, 22, 3};
    }
}

std::vector<Text> FolderNames(Shape shape) {
    switch (shape) {
        case Shape::PrefixSiblings:
            return {u"Rock", u"Rock 2", u"Rock2", u"Roc", u"Rock - Live", u"R", u"Rock.", u"Ro"};
        case Shape::CaseTwins:
            return {u"Rock", u"rock", u"ROCK", u"Jazz", u"jazz", u"Zz", u"zZ", u"live", u"Live"};
        case Shape::ForeignCase:
            return {u"\u00C9pique", u"\u00E9pique", u"stra\u00DFe", u"STRASSE", u"\u03A9",
                    u"\u03C9",      u"\u212A",      u"K",           u"k",       u"[a",
                    u"{a",          u"@b",          u"`b",          u"\u0130",  u"\uFF21",
                    u"\uFF41",      u"\u0161",      u"\u0160"};
        case Shape::LongNames:
            return {Text(70, u'L') + u" one",
                    Text(70, u'l') + u" two",
                    Text(110, u'x'),
                    u"\U0001F3B5 songs",
                    u"\U0001F3B6 songs",
                    Text(128, u'q'),
                    u"short"};
        default:
            return {u"Rock", u"Jazz",    u"Classical", u"Rock 2", u"Live",
                    u"1999", u"B-sides", u"Demo",      u"x.mp3"};
    }
}

std::vector<Text> FileNames(Shape shape) {
    std::vector<Text> names = {u"a.mp3", u"B.MP3", u"b.flac",    u"c.Ogg", u"notes.txt", u"cover",
                               u"odd.",  u".mp3",  u"x.mp3.txt", u"d.ogg", u"e.e.mp3",   u"f.Flac"};
    if (shape == Shape::CaseTwins) names.insert(names.end(), {u"A.mp3", u"b.mp3", u"C.OGG"});
    if (shape == Shape::ForeignCase) {
        names.insert(names.end(), {u"\u00E9.mp3", u"\u00C9.mp3", u"s.\u00C9", u"s.\u00E9",
                                   u"[x.mp3", u"{x.mp3"});
    }
    if (shape == Shape::LongNames) {
        names.insert(names.end(), {Text(120, u'n') + u".mp3", Text(120, u'N') + u".mp3"});
    }
    return names;
}

class Grower {
public:
    Grower(Random& random, const World& world, const Growth& growth)
        : random_(random), world_(world), growth_(growth), left_(growth.allFolders) {}

    void Fill(DiskEntry& folder, int level) {
        AddFiles(folder);
        if (level < growth_.depth) AddFolders(folder, level);
        for (std::size_t i = folder.entries.size(); i > 1; --i) {
            std::swap(folder.entries[i - 1],
                      folder.entries[static_cast<std::size_t>(random_.Below(static_cast<int>(i)))]);
        }
    }

private:
    void AddFiles(DiskEntry& folder) {
        const int count = random_.Below(growth_.mostFiles + 1);
        for (int i = 0; i < count; ++i)
            Add(folder, random_.Pick(world_.fileNames), false);
    }

    void AddFolders(DiskEntry& folder, int level) {
        const int count = (level == 0 ? 1 : 0) + random_.Below(growth_.mostFolders + 1);
        for (int i = 0; i < count && left_ > 0; ++i) {
            DiskEntry* child = Add(folder, random_.Pick(world_.folderNames), true);
            if (child == nullptr) continue;
            --left_;
            DiskEntry filled = std::move(*child);
            Fill(filled, level + 1);
            *child = std::move(filled);
        }
    }

    DiskEntry* Add(DiskEntry& folder, const Text& name, bool isDirectory) {
        if (FindEntry(folder, name) != nullptr) return nullptr;
        DiskEntry entry;
        entry.name = name;
        entry.isDirectory = isDirectory;
        entry.isHidden = random_.Chance(12);
        folder.entries.push_back(std::move(entry));
        return &folder.entries.back();
    }

    Random& random_;
    const World& world_;
    const Growth growth_;
    int left_;
};

void AddVolume(World& world, Random& random, const Text& path, const Growth& growth) {
    Volume volume;
    volume.path = path;
    volume.root.isDirectory = true;
    Grower(random, world, growth).Fill(volume.root, 0);
    world.disk.volumes.push_back(std::move(volume));
}

Text SwapCase(Text text) {
    for (char16_t& unit : text) {
        if (unit >= u'A' && unit <= u'Z') {
            unit = static_cast<char16_t>(unit + 32);
        } else if (unit >= u'a' && unit <= u'z') {
            unit = static_cast<char16_t>(unit - 32);
        }
    }
    return text;
}

// A root that shows a folder of a drive a second time, at times spelt otherwise.
void AddFolderRoot(World& world, Random& random, const Text& text) {
    Text path = random.Pick(AllFolders(world.disk));
    if (random.Chance(50)) path = SwapCase(path);
    world.roots.push_back({text, path});
}

void AddNetwork(World& world, Random& random, const Growth& growth) {
    const int computers = 1 + random.Below(2);
    for (int i = 0; i < computers; ++i) {
        Computer computer;
        computer.name = i == 0 ? u"STUDIO" : u"ATTIC";
        const int shares = random.Below(3) + (i == 0 ? 1 : 0);
        for (int k = 0; k < shares; ++k) {
            const Text name = k == 0 ? u"music" : k == 1 ? u"music2" : u"old";
            const Text path = u"\\\\" + computer.name + u"\\" + name + u"\\";
            AddVolume(world, random, path, {2, growth.mostFolders, 8, growth.mostFiles});
            computer.shares.push_back({name, path});
        }
        world.computers.push_back(std::move(computer));
    }
}

std::vector<NamedType> MakeTypes(Random& random) {
    std::vector<NamedType> types = {{u".mp3"}, {u".FLAC"}, {u".ogg"}, {u".mp3"}, {u".\u00E9"}};
    for (NamedType& type : types)
        type.isExcluded = random.Chance(8);
    return types;
}

}  // namespace

std::uint64_t Random::Next() {
    state_ += 0x9E3779B97F4A7C15u;
    std::uint64_t mixed = state_;
    mixed = (mixed ^ (mixed >> 30)) * 0xBF58476D1CE4E5B9u;
    mixed = (mixed ^ (mixed >> 27)) * 0x94D049BB133111EBu;
    return mixed ^ (mixed >> 31);
}

int Random::Below(int count) {
    return static_cast<int>((Next() >> 33) % static_cast<std::uint64_t>(count));
}

const char* NameOf(Shape shape) {
    switch (shape) {
        case Shape::Mixed:
            return "Mixed";
        case Shape::Deep:
            return "Deep";
        case Shape::Wide:
            return "Wide";
        case Shape::PrefixSiblings:
            return "PrefixSiblings";
        case Shape::CaseTwins:
            return "CaseTwins";
        case Shape::ForeignCase:
            return "ForeignCase";
        case Shape::LongNames:
            return "LongNames";
        case Shape::Network:
            return "Network";
        case Shape::SharedFolders:
            return "SharedFolders";
    }
    return "?";
}

World MakeWorld(Shape shape, std::uint64_t seed) {
    Random random(seed);
    World world;
    world.folderNames = FolderNames(shape);
    world.fileNames = FileNames(shape);
    world.types = MakeTypes(random);
    world.hasRowWithoutRecord = random.Chance(3);
    const Growth growth = GrowthOf(shape);
    AddVolume(world, random, u"C:\\", growth);
    const bool hasSecond = random.Chance(35);
    if (hasSecond) AddVolume(world, random, u"D:\\", {2, 3, 6, 2});
    const bool isShared = shape == Shape::SharedFolders;
    const int libraries = isShared ? 1 + random.Below(3) : random.Chance(35) ? 1 : 0;
    for (int i = 0; i < libraries; ++i) {
        AddFolderRoot(world, random, i == 0 ? u"Music" : i == 1 ? u"Public Music" : u"Archive");
    }
    world.roots.push_back({u"Local Disk (C:)", u"C:\\", true});
    if (hasSecond) world.roots.push_back({u"Data (D:)", u"D:\\", true});
    if (random.Chance(20)) AddFolderRoot(world, random, u"Video");
    if (shape == Shape::Network || random.Chance(20)) {
        AddNetwork(world, random, growth);
        world.roots.push_back({u"Network", networkPath});
        if (random.Chance(30)) AddFolderRoot(world, random, u"Late");
    }
    return world;
}

std::string Describe(const World& world) {
    std::string out = "disk:\n" + Describe(world.disk) + "roots:\n";
    for (const TreeRoot& root : world.roots) {
        out += "  " + Utf8(root.text) + " -> " + Utf8(root.path) + "\n";
    }
    for (const Computer& computer : world.computers) {
        for (const TreeRoot& share : computer.shares) {
            out += "  share " + Utf8(computer.name) + " -> " + Utf8(share.path) + "\n";
        }
    }
    out += "types:";
    for (const NamedType& type : world.types) {
        out += " " + Utf8(type.extension) + (type.isExcluded ? " (excluded)" : "");
    }
    return out + (world.hasRowWithoutRecord ? "\na row without a record in each list\n" : "\n");
}

}  // namespace oracle

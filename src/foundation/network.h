// The computers on the network and the folders that they share.
#pragma once

#include <cstdint>
#include <functional>

#include "foundation/arrays.h"
#include "foundation/string.h"

// The platform's published record of the network, NETRESOURCEW.
struct _NETRESOURCEW;

struct clNetworkServer {
    clString name;            // without leading backslashes
    clStringList shareNames;  // for display
    clStringList sharePaths;  // in step with shareNames, each with a trailing backslash
};

// The result of one walk through the network: servers in the order of their
// first appearance, each with its disk shares. Without a network there are none.
class clNetworkNeighbourhood {
public:
    using Walk = std::function<void(clNetworkNeighbourhood& result)>;

    // Walks the platform's network. Blocks its thread for as long as the
    // platform takes, with 16 KB of stack for each level of containers.
    // What cannot be read counts as empty; nothing is reported.
    clNetworkNeighbourhood();
    // Lets `walk` find the shares, by `AddShare`, and then groups them.
    explicit clNetworkNeighbourhood(const Walk& walk);
    clNetworkNeighbourhood(const clNetworkNeighbourhood&) = delete;
    clNetworkNeighbourhood& operator=(const clNetworkNeighbourhood&) = delete;
    ~clNetworkNeighbourhood();

    std::int64_t ServerCount() const { return servers.Count(); }
    // Owned by this object: the caller checks the bounds.
    const clNetworkServer* ServerAt(std::int64_t index) const;
    // One string for each server, always empty.
    const clStringList& Keys() const { return keys; }

    // Notes a share that the walk has found. `local` is the drive letter to
    // which it is mapped, or empty; `remote` its path. A share without a path,
    // and one whose path is known already in whatever case, is left out.
    // Only while the walk runs.
    void AddShare(const clString& local, const clString& remote);

    // What the walk found: the text for display, and in step with it the path.
    const clStringList& FoundNames() const { return foundNames; }
    const clStringList& FoundPaths() const { return foundPaths; }

private:
    void Group();
    clNetworkServer* ServerNamed(const clString& name);

    clPtrArray servers;  // clNetworkServer, owned
    clStringList keys;
    clNetworkServer* current;  // the server last touched, or null
    clStringList foundNames;
    clStringList foundPaths;
};

// Adds what lies in the container `record` and below it to `result`. A container
// keeps its own scope and usage with `keepScope`; otherwise it is opened as a
// container of the whole network. False if it could not be opened. Reads one
// buffer of 16384 bytes for each container: a larger one shows in part.
bool EnumerateContainer(clNetworkNeighbourhood& result, const _NETRESOURCEW& record,
                        bool keepScope);

// What to do with one record of a container.
enum class NetworkStep {
    Skip,
    Enter,         // a domain or a server: open it as a container
    EnterAsGiven,  // a network: open it with its own scope and usage
    TakeShare,     // a disk share
};

// `displayType` and `type` are the record's dwDisplayType and dwType.
NetworkStep StepForRecord(std::uint32_t displayType, std::uint32_t type);

// The computer's name in a share's path, "SERVER" in "\\SERVER\Music\".
clString ComputerName(const clString& path);
// A share's name under its server: the text behind the last backslash. Drive
// letters stand for themselves; nothing is left of "Z:\".
clString ShareName(const clString& foundName);

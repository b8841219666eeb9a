#include "foundation/network.h"

#include "foundation/paths.h"

namespace {

// Values of the published NETRESOURCE record.
constexpr std::uint32_t diskType = 1;
constexpr std::uint32_t domainDisplay = 1;
constexpr std::uint32_t serverDisplay = 2;
constexpr std::uint32_t shareDisplay = 3;
constexpr std::uint32_t networkDisplay = 6;

void RemoveLeadingBackslashes(clString& text) {
    for (int i = 0; i < 2 && text.CharAt(1) == L'\\'; ++i)
        text.EraseRange(1, 1);
}

}  // namespace

NetworkStep StepForRecord(std::uint32_t displayType, std::uint32_t type) {
    if (displayType == networkDisplay) return NetworkStep::EnterAsGiven;
    if (displayType == domainDisplay || displayType == serverDisplay) return NetworkStep::Enter;
    const bool isDiskShare = type == diskType && displayType == shareDisplay;
    return isDiskShare ? NetworkStep::TakeShare : NetworkStep::Skip;
}

clString ComputerName(const clString& path) {
    clString name = path;
    RemoveLeadingBackslashes(name);
    const std::int32_t end = name.FindChar(L'\\');
    return end == 0 ? name : name.Left(end - 1);
}

clString ShareName(const clString& foundName) {
    const std::int32_t last = foundName.FindLast(L'\\');
    return last == 0 ? foundName : foundName.Mid(last + 1);
}

clNetworkNeighbourhood::clNetworkNeighbourhood(const Walk& walk) : current(nullptr) {
    walk(*this);
    Group();
}

clNetworkNeighbourhood::~clNetworkNeighbourhood() {
    for (std::int64_t i = 0; i < servers.Count(); ++i)
        delete ServerAt(i);
}

const clNetworkServer* clNetworkNeighbourhood::ServerAt(std::int64_t index) const {
    return reinterpret_cast<const clNetworkServer*>(servers.Get(index));
}

void clNetworkNeighbourhood::AddShare(const clString& local, const clString& remote) {
    if (remote.IsEmpty()) return;
    clString path = remote;
    EnsureBackslash(path);
    clString name = local;
    if (name.IsEmpty()) {
        name = path;
        RemoveLeadingBackslashes(name);
        if (name.CharAt(POS_LAST) == L'\\') name.EraseRange(name.Length(), name.Length());
    }
    if (foundPaths.IndexOf(path, true) != -1) return;
    foundNames.Add(name);
    foundPaths.Add(path);
}

// Exact: names that differ in case make two servers.
clNetworkServer* clNetworkNeighbourhood::ServerNamed(const clString& name) {
    for (std::int64_t i = 0; i < servers.Count(); ++i) {
        auto* server = reinterpret_cast<clNetworkServer*>(servers.Get(i));
        if (server->name.Equals(name)) return server;
    }
    auto* server = new clNetworkServer;
    servers.Add(reinterpret_cast<std::int64_t>(server));
    keys.Add(L"");
    return server;
}

void clNetworkNeighbourhood::Group() {
    for (std::int64_t i = 0; i < foundPaths.Count(); ++i) {
        const clString name = ComputerName(*foundPaths.At(i));
        current = ServerNamed(name);
        current->name.Assign(name);
        current->shareNames.Add(ShareName(*foundNames.At(i)));
        current->sharePaths.Add(*foundPaths.At(i));
    }
}

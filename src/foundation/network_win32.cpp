#include "foundation/network.h"

#include <windows.h>
#include <winnetwk.h>

#include "foundation/handle.h"

namespace {

constexpr DWORD bufferSize = 16384;

struct NetworkEnumTraits {
    using Raw = HANDLE;
    static Raw Invalid() { return nullptr; }
    static void Close(Raw raw) { WNetCloseEnum(raw); }
};

// One container, open for one reading.
class ContainerReader {
public:
    // A null `parent` is the top level.
    ContainerReader(DWORD scope, NETRESOURCEW* parent) {
        HANDLE handle = nullptr;
        if (WNetOpenEnumW(scope, RESOURCETYPE_ANY, 0, parent, &handle) == NO_ERROR) {
            enumeration.Reset(handle);
        }
    }

    bool IsOpen() const { return enumeration.IsValid(); }

    // Calls `take` for each record that one buffer holds. A container with more
    // is shown in part: a large domain would else hold the window for minutes.
    template <class Take>
    void ReadOnce(Take take) {
        alignas(NETRESOURCEW) BYTE buffer[bufferSize];
        DWORD count = static_cast<DWORD>(-1);
        DWORD size = bufferSize;
        if (WNetEnumResourceW(enumeration.Get(), &count, buffer, &size) != NO_ERROR) return;
        const auto* records = reinterpret_cast<const NETRESOURCEW*>(buffer);
        for (DWORD i = 0; i < count; ++i)
            take(records[i]);
    }

private:
    clHandle<NetworkEnumTraits> enumeration;
};

void WalkNetwork(clNetworkNeighbourhood& result) {
    ContainerReader top(RESOURCE_CONTEXT, nullptr);
    if (!top.IsOpen()) return;
    top.ReadOnce([&result](const NETRESOURCEW& record) {
        if (record.dwUsage == RESOURCEUSAGE_CONTAINER && record.dwType == RESOURCETYPE_ANY) {
            EnumerateContainer(result, record, false);
        }
    });
}

void TakeRecord(clNetworkNeighbourhood& result, const NETRESOURCEW& record) {
    switch (StepForRecord(record.dwDisplayType, record.dwType)) {
        case NetworkStep::Skip:
            break;
        case NetworkStep::Enter:
            EnumerateContainer(result, record, false);
            break;
        case NetworkStep::EnterAsGiven:
            EnumerateContainer(result, record, true);
            break;
        case NetworkStep::TakeShare:
            result.AddShare(record.lpLocalName, record.lpRemoteName);
            break;
    }
}

}  // namespace

clNetworkNeighbourhood::clNetworkNeighbourhood() : clNetworkNeighbourhood(WalkNetwork) {}

bool EnumerateContainer(clNetworkNeighbourhood& result, const NETRESOURCEW& record,
                        bool keepScope) {
    NETRESOURCEW container = record;
    if (!keepScope) {
        container.dwScope = RESOURCE_GLOBALNET;
        container.dwUsage = RESOURCEUSAGE_CONTAINER;
    }
    ContainerReader reader(RESOURCE_GLOBALNET, &container);
    if (!reader.IsOpen()) return false;
    reader.ReadOnce([&result](const NETRESOURCEW& found) { TakeRecord(result, found); });
    return true;
}

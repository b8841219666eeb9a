// Walks the network and writes what it found to a file, as UTF-8:
//   network_walk FILE
//   network_walk FILE REMOTE SCOPE USAGE KEEP   one container of the test network
#include <windows.h>
#include <winnetwk.h>

#include <cstdlib>
#include <fstream>

#include "foundation/network.h"
#include "tests/support/text.h"

namespace {

void WriteServers(std::ostream& out, const clNetworkNeighbourhood& network) {
    for (std::int64_t i = 0; i < network.ServerCount(); ++i) {
        const clNetworkServer& server = *network.ServerAt(i);
        out << '[' << Utf8(server.name) << ']';
        for (std::int64_t k = 0; k < server.shareNames.Count(); ++k) {
            out << ' ' << Utf8(*server.shareNames.At(k)) << '='
                << Utf8(server.sharePaths.ItemCopy(k));
        }
        out << '\n';
    }
    if (network.Keys().Count() != network.ServerCount()) out << "keys differ\n";
    if (network.FoundNames().Count() != network.FoundPaths().Count()) out << "lists differ\n";
}

DWORD NumberOf(const wchar_t* text) {
    return static_cast<DWORD>(std::wcstoul(text, nullptr, 0));
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    if (argc != 2 && argc != 6) return 2;
    std::ofstream out(Utf8(argv[1]));
    if (argc == 2) {
        const clNetworkNeighbourhood network;
        WriteServers(out, network);
        return 0;
    }
    wchar_t provider[] = L"Test Network";
    NETRESOURCEW container{};
    container.lpRemoteName = argv[2];
    container.lpProvider = provider;
    container.dwScope = NumberOf(argv[3]);
    container.dwUsage = NumberOf(argv[4]);
    const bool keepScope = NumberOf(argv[5]) != 0;
    bool isOpened = false;
    const clNetworkNeighbourhood network([&](clNetworkNeighbourhood& result) {
        isOpened = EnumerateContainer(result, container, keepScope);
    });
    out << (isOpened ? "opened\n" : "refused\n");
    WriteServers(out, network);
    return 0;
}

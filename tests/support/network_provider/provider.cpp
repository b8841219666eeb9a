// A network provider that serves the records of a text file.
//
// TEST_NETWORK_FILE names the file. Lines, with "-" for a null text:
//   parent|scope|type|display type|usage|local name|remote name
//   !open|parent|error    opening that container fails
//   !read|parent|error    reading it fails
// The parent of the first level is "-". TEST_NETWORK_LOG names a file to which
// each call is added as one line.
#include <windows.h>
#include <winnetwk.h>
// It needs the two above, and does not name its linkage itself.
extern "C" {
#include <npapi.h>
}

#include <algorithm>
#include <cstring>
#include <fstream>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

constexpr wchar_t providerName[] = L"Test Network";
const std::string nullText = "-";

struct Record {
    NETRESOURCEW numbers{};
    std::string local;
    std::string remote;
};

struct Network {
    std::map<std::string, std::vector<Record>> children;
    std::map<std::string, DWORD> openErrors;
    std::map<std::string, DWORD> readErrors;
};

struct Enumeration {
    std::vector<Record> records;
    std::size_t next = 0;
    DWORD error = NO_ERROR;
};

std::string Variable(const char* name) {
    char value[MAX_PATH] = {};
    GetEnvironmentVariableA(name, value, MAX_PATH);
    return value;
}

void Log(const std::string& line) {
    std::ofstream(Variable("TEST_NETWORK_LOG"), std::ios::app) << line << '\n';
}

std::wstring Widened(const std::string& text) {
    wchar_t wide[MAX_PATH] = {};
    MultiByteToWideChar(CP_UTF8, 0, text.c_str(), -1, wide, MAX_PATH);
    return wide;
}

std::string Narrowed(const wchar_t* text) {
    if (text == nullptr) return nullText;
    char narrow[MAX_PATH] = {};
    WideCharToMultiByte(CP_UTF8, 0, text, -1, narrow, MAX_PATH, nullptr, nullptr);
    return narrow;
}

std::vector<std::string> Fields(const std::string& line) {
    std::vector<std::string> fields;
    std::istringstream stream(line);
    for (std::string field; std::getline(stream, field, '|');)
        fields.push_back(field);
    fields.resize(7);
    return fields;
}

DWORD Number(const std::string& text) {
    return static_cast<DWORD>(std::stoul(text, nullptr, 0));
}

Network ReadNetwork() {
    Network network;
    std::ifstream file(Variable("TEST_NETWORK_FILE"));
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> fields = Fields(line);
        if (fields[0] == "!open") {
            network.openErrors[fields[1]] = Number(fields[2]);
        } else if (fields[0] == "!read") {
            network.readErrors[fields[1]] = Number(fields[2]);
        } else if (!line.empty()) {
            Record record{{}, fields[5], fields[6]};
            record.numbers.dwScope = Number(fields[1]);
            record.numbers.dwType = Number(fields[2]);
            record.numbers.dwDisplayType = Number(fields[3]);
            record.numbers.dwUsage = Number(fields[4]);
            network.children[fields[0]].push_back(record);
        }
    }
    return network;
}

// A caller's buffer: records from its start, their texts from its end.
class Packer {
public:
    Packer(void* buffer, DWORD size)
        : records(static_cast<NETRESOURCEW*>(buffer)),
          textBegin(static_cast<BYTE*>(buffer) + size / sizeof(wchar_t) * sizeof(wchar_t)) {}

    bool Add(const Record& record) {
        if (Room() < SpaceFor(record)) return false;
        NETRESOURCEW& out = records[count++];
        out = record.numbers;
        out.lpLocalName = Text(record.local);
        out.lpRemoteName = Text(record.remote);
        out.lpProvider = Put(providerName);
        return true;
    }

    DWORD Count() const { return count; }

private:
    static std::size_t Bytes(const std::wstring& text) {
        return (text.size() + 1) * sizeof(wchar_t);
    }
    static std::size_t BytesUnlessNull(const std::string& text) {
        return text == nullText ? 0 : Bytes(Widened(text));
    }
    static std::size_t SpaceFor(const Record& record) {
        return sizeof(NETRESOURCEW) + BytesUnlessNull(record.local) +
               BytesUnlessNull(record.remote) + Bytes(providerName);
    }
    std::size_t Room() const {
        return static_cast<std::size_t>(textBegin - reinterpret_cast<BYTE*>(records + count));
    }
    wchar_t* Text(const std::string& text) {
        return text == nullText ? nullptr : Put(Widened(text));
    }
    wchar_t* Put(const std::wstring& text) {
        textBegin -= Bytes(text);
        std::memcpy(textBegin, text.c_str(), Bytes(text));
        return reinterpret_cast<wchar_t*>(textBegin);
    }

    NETRESOURCEW* records;
    BYTE* textBegin;
    DWORD count = 0;
};

}  // namespace

DWORD WINAPI NPGetCaps(DWORD index) {
    switch (index) {
        case WNNC_SPEC_VERSION:
            return WNNC_SPEC_VERSION51;
        case WNNC_NET_TYPE:
            return 0x00990000;
        case WNNC_ENUMERATION:
            return WNNC_ENUM_GLOBAL;
        case WNNC_START:
            return WNNC_WAIT_FOR_START;
        default:
            return 0;
    }
}

DWORD WINAPI NPOpenEnum(DWORD scope, DWORD type, DWORD usage, LPNETRESOURCEW parent,
                        LPHANDLE result) {
    // The neighbourhood of this machine is not known here. The platform adds an
    // entry of its own for the whole network.
    if (scope != RESOURCE_GLOBALNET) return ERROR_NOT_SUPPORTED;
    const std::string name = parent != nullptr ? Narrowed(parent->lpRemoteName) : nullText;
    std::ostringstream line;
    line << "open " << name << " for " << scope << ' ' << type << ' ' << usage;
    if (parent != nullptr) line << " as " << parent->dwScope << ' ' << std::hex << parent->dwUsage;
    Log(line.str());
    Network network = ReadNetwork();
    if (network.openErrors.count(name) != 0) return network.openErrors[name];
    auto* enumeration = new Enumeration;
    enumeration->records = network.children[name];
    if (network.readErrors.count(name) != 0) enumeration->error = network.readErrors[name];
    *result = enumeration;
    return WN_SUCCESS;
}

DWORD WINAPI NPEnumResource(HANDLE handle, LPDWORD count, LPVOID buffer, LPDWORD size) {
    auto* enumeration = static_cast<Enumeration*>(handle);
    std::ostringstream line;
    line << "read " << static_cast<int>(*count) << ' ' << *size;
    Log(line.str());
    if (enumeration->error != NO_ERROR) return enumeration->error;
    std::vector<Record>& records = enumeration->records;
    if (enumeration->next == records.size()) return WN_NO_MORE_ENTRIES;
    Packer packer(buffer, *size);
    while (enumeration->next < records.size() && packer.Count() < *count &&
           packer.Add(records[enumeration->next])) {
        ++enumeration->next;
    }
    *count = packer.Count();
    return *count != 0 ? WN_SUCCESS : WN_MORE_DATA;
}

DWORD WINAPI NPCloseEnum(HANDLE handle) {
    Log("close");
    delete static_cast<Enumeration*>(handle);
    return WN_SUCCESS;
}

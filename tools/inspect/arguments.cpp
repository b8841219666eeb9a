#include "tools/inspect/arguments.h"

namespace {

struct CommandName {
    const wchar_t* name;
    InspectCommand command;
};

constexpr CommandName commandNames[] = {
    {L"decoders", InspectCommand::Decoders},
    {L"gather", InspectCommand::Gather},
    {L"convert", InspectCommand::Convert},
    {L"properties", InspectCommand::Properties},
};

struct Option {
    const wchar_t* name;
    clStringList InspectRequest::*values;
};

constexpr Option options[] = {
    {L"--folder-only", &InspectRequest::foldersOnly},
    {L"--exclude-folder", &InspectRequest::foldersExcluded},
    {L"--include-file", &InspectRequest::filesIncluded},
    {L"--exclude-file", &InspectRequest::filesExcluded},
    {L"--exclude-type", &InspectRequest::typesExcluded},
};

clString Message(const wchar_t* before, const clString& quoted, const wchar_t* behind = L"") {
    clString message(before);
    message.Append(L"'");
    message.Append(quoted);
    message.Append(L"'");
    message.Append(behind);
    return message;
}

bool IsHelp(const clString& argument) {
    return argument.Equals(L"--help") || argument.Equals(L"-h") || argument.Equals(L"-?") ||
           argument.Equals(L"/?");
}

// A path that begins like an option can be written with ".\" in front.
bool LooksLikeOption(const clString& argument) {
    return argument.CharAt(1) == L'-';
}

const Option* FindOption(const clString& argument) {
    for (const Option& option : options) {
        if (argument.Equals(option.name)) return &option;
    }
    return nullptr;
}

bool IsExtension(const clString& text) {
    return text.Length() > 1 && text.CharAt(1) == L'.' && text.Find(L"\\") == 0;
}

// The arguments behind "gather" and "convert".
clString ParseSelection(std::int32_t count, const wchar_t* const* arguments,
                        InspectRequest& request) {
    for (std::int32_t i = 0; i < count; ++i) {
        const clString argument(arguments[i]);
        if (argument.IsEmpty()) return clString(L"a folder's name is empty");
        if (!LooksLikeOption(argument)) {
            request.folders.Add(argument);
            continue;
        }
        const Option* option = FindOption(argument);
        if (option == nullptr) return Message(L"unknown option ", argument);
        const clString value(i + 1 < count ? arguments[i + 1] : L"");
        if (value.IsEmpty() || LooksLikeOption(value)) {
            return Message(L"the option ", argument, L" needs a value");
        }
        if (option->values == &InspectRequest::typesExcluded && !IsExtension(value)) {
            return Message(L"a type is an extension with its dot, not ", value);
        }
        (request.*option->values).Add(value);
        ++i;
    }
    if (request.folders.Count() + request.foldersOnly.Count() + request.filesIncluded.Count() ==
        0) {
        return clString(L"no folder is given");
    }
    return clString();
}

// The arguments behind "properties".
clString ParseFiles(std::int32_t count, const wchar_t* const* arguments, InspectRequest& request) {
    for (std::int32_t i = 0; i < count; ++i) {
        const clString argument(arguments[i]);
        if (argument.IsEmpty()) return clString(L"a file's name is empty");
        if (LooksLikeOption(argument)) return Message(L"unknown option ", argument);
        request.files.Add(argument);
    }
    return count > 0 ? clString() : clString(L"no file is given");
}

clString ParseNothing(std::int32_t count, const wchar_t* const* arguments) {
    return count == 0 ? clString() : Message(L"'decoders' takes no argument ", arguments[0]);
}

}  // namespace

clString ParseArguments(std::int32_t count, const wchar_t* const* arguments,
                        InspectRequest& request) {
    for (std::int32_t i = 0; i < count; ++i) {
        if (IsHelp(arguments[i])) return clString();
    }
    if (count == 0) return clString(L"a command is missing");
    const clString name(arguments[0]);
    for (const CommandName& known : commandNames) {
        if (!name.Equals(known.name)) continue;
        request.command = known.command;
        switch (known.command) {
            case InspectCommand::Decoders:
                return ParseNothing(count - 1, arguments + 1);
            case InspectCommand::Properties:
                return ParseFiles(count - 1, arguments + 1, request);
            default:
                return ParseSelection(count - 1, arguments + 1, request);
        }
    }
    return Message(L"unknown command ", name);
}

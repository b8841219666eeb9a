#include "foundation/settings.h"
#include "tools/inspect/commands_win32.h"

namespace {

int RefuseArguments(const clString& error, Output& errors) {
    errors.Print(errorPrefix);
    errors.PrintLine(error);
    errors.Print(UsageText());
    return exitUsage;
}

int ShowHelp(Output& out) {
    out.Print(UsageText());
    out.Print(HelpText());
    return exitDone;
}

int Run(const InspectRequest& request, Output& out, Output& errors) {
    switch (request.command) {
        case InspectCommand::Decoders:
            return RunDecoders(out);
        case InspectCommand::Gather:
            return RunGather(request, out, errors);
        case InspectCommand::Convert:
            return RunConvert(request, out, errors);
        case InspectCommand::Properties:
            return RunProperties(request, out, errors);
        case InspectCommand::Help:
            break;
    }
    return ShowHelp(out);
}

}  // namespace

int wmain(int count, wchar_t** arguments) {
    Output out(STD_OUTPUT_HANDLE);
    Output errors(STD_ERROR_HANDLE);
    InspectRequest request;
    const clString error =
        ParseArguments(count > 0 ? count - 1 : 0, arguments + (count > 0 ? 1 : 0), request);
    if (!error.IsEmpty()) return RefuseArguments(error, errors);

    InitSettings();
    const int code = Run(request, out, errors);
    if (out.Flush()) return code;
    errors.Print(errorPrefix);
    errors.PrintLine(L"the output could not be written");
    return exitNothing;
}

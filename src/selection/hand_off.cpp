#include "selection/hand_off.h"

#include <bit>

#include "foundation/paths.h"

static_assert(std::endian::native == std::endian::little,
              "the text in memory is written to the list file as it stands");

namespace {

constexpr wchar_t lineEnd[] = {13, 10};

}  // namespace

ByteRun ListEntryText(const clString& path) {
    return {path.Chars(), static_cast<std::uint32_t>(path.Length()) *
                              static_cast<std::uint32_t>(sizeof(wchar_t))};
}

ByteRun ListEntryEnd() {
    return {lineEnd, sizeof(lineEnd)};
}

clString HandOffEventName(std::uint32_t tickCount) {
    clString name;
    name.Format(L"fszkr-%d", static_cast<std::int32_t>(tickCount));
    return name;
}

clString ConverterPath(const clString& programFolder) {
    clString path(programFolder);
    path.Append(converterName);
    return path;
}

clString ConverterArguments(const clString& listFile, const clString& eventName) {
    clString arguments;
    arguments.Format(L"-list_to_conv=\"%s\" -signal_event_got_files=\"%s\"", listFile.Chars(),
                     eventName.Chars());
    return arguments;
}

clString ConverterCommandLine(const clString& executable, const clString& arguments) {
    clString line(executable);
    Quote(line);
    line.Append(L' ');
    line.Append(arguments);
    return line;
}

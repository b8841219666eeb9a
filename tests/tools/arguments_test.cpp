#include "tools/inspect/arguments.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/support/text.h"

namespace {

using Arguments = std::vector<const wchar_t*>;

std::string ErrorOf(const Arguments& arguments, InspectRequest& request) {
    return Utf8(
        ParseArguments(static_cast<std::int32_t>(arguments.size()), arguments.data(), request));
}

std::string ErrorOf(const Arguments& arguments) {
    InspectRequest request;
    return ErrorOf(arguments, request);
}

std::string Joined(const clStringList& list) {
    clString text;
    list.Join(text);
    text.Replace(L"\r", L"|");
    return Utf8(text);
}

}  // namespace

TEST(InspectArguments, TellWhatIsWrongWithThem) {
    const struct {
        Arguments arguments;
        const char* error;
    } cases[] = {
        {{}, "a command is missing"},
        {{L""}, "unknown command ''"},
        {{L"Gather", L"a"}, "unknown command 'Gather'"},
        {{L"C:\\Music"}, "unknown command 'C:\\Music'"},
        {{L"--folder-only", L"a"}, "unknown command '--folder-only'"},
        {{L"decoders", L"x"}, "'decoders' takes no argument 'x'"},
        {{L"gather"}, "no folder is given"},
        {{L"properties"}, "no file is given"},
        {{L"properties", L"a", L""}, "a file's name is empty"},
        {{L"properties", L"a", L"--folder-only"}, "unknown option '--folder-only'"},
        {{L"convert"}, "no folder is given"},
        {{L"gather", L""}, "a folder's name is empty"},
        {{L"gather", L"--exclude-folder", L"a"}, "no folder is given"},
        {{L"gather", L"--exclude-file", L"a", L"--exclude-type", L".x"}, "no folder is given"},
        {{L"gather", L"a", L"--folder"}, "unknown option '--folder'"},
        {{L"gather", L"-x", L"a"}, "unknown option '-x'"},
        {{L"gather", L"--folder-only=a"}, "unknown option '--folder-only=a'"},
        {{L"gather", L"a", L"--folder-only"}, "the option '--folder-only' needs a value"},
        {{L"gather", L"a", L"--exclude-file", L""}, "the option '--exclude-file' needs a value"},
        {{L"gather", L"--exclude-folder", L"--include-file", L"b", L"a"},
         "the option '--exclude-folder' needs a value"},
        {{L"gather", L"a", L"--exclude-type", L"mp3"},
         "a type is an extension with its dot, not 'mp3'"},
        {{L"gather", L"a", L"--exclude-type", L"."},
         "a type is an extension with its dot, not '.'"},
        {{L"gather", L"a", L"--exclude-type", L".\\x.mp3"},
         "a type is an extension with its dot, not '.\\x.mp3'"},
    };
    for (const auto& c : cases)
        EXPECT_EQ(ErrorOf(c.arguments), c.error);
}

TEST(InspectArguments, NameTheCommand) {
    const struct {
        Arguments arguments;
        InspectCommand command;
    } cases[] = {
        {{L"--help"}, InspectCommand::Help},
        {{L"-h"}, InspectCommand::Help},
        {{L"-?"}, InspectCommand::Help},
        {{L"/?"}, InspectCommand::Help},
        {{L"gather", L"--nonsense", L"--help"}, InspectCommand::Help},
        {{L"decoders"}, InspectCommand::Decoders},
        {{L"gather", L"a"}, InspectCommand::Gather},
        {{L"gather", L"--folder-only", L"a"}, InspectCommand::Gather},
        {{L"convert", L"--include-file", L"a"}, InspectCommand::Convert},
        {{L"properties", L"a"}, InspectCommand::Properties},
        {{L"properties", L"a", L"/?"}, InspectCommand::Help},
    };
    for (const auto& c : cases) {
        InspectRequest request;
        EXPECT_EQ(ErrorOf(c.arguments, request), "");
        EXPECT_EQ(request.command, c.command) << Utf8(c.arguments.back());
    }
}

TEST(InspectArguments, FillEachListInTheOrderGiven) {
    InspectRequest request;
    ASSERT_EQ(ErrorOf({L"gather", L"one", L"--folder-only", L"two", L"--exclude-folder", L"three",
                       L"four", L"--include-file", L"five", L"--exclude-file", L"six",
                       L"--exclude-type", L".seven", L"--folder-only", L"eight", L"one"},
                      request),
              "");
    EXPECT_EQ(Joined(request.folders), "one|four|one");
    EXPECT_EQ(Joined(request.foldersOnly), "two|eight");
    EXPECT_EQ(Joined(request.foldersExcluded), "three");
    EXPECT_EQ(Joined(request.filesIncluded), "five");
    EXPECT_EQ(Joined(request.filesExcluded), "six");
    EXPECT_EQ(Joined(request.typesExcluded), ".seven");
}

TEST(InspectArguments, TakeFilesAsTheyAreGiven) {
    InspectRequest request;
    ASSERT_EQ(ErrorOf({L"properties", L"b.mp3", L".\\-a.mp3", L"b.mp3"}, request), "");
    EXPECT_EQ(Joined(request.files), "b.mp3|.\\-a.mp3|b.mp3");
    EXPECT_EQ(request.folders.Count(), 0);
}

TEST(InspectArguments, TheHelpNamesEachCommandAndOption) {
    clString help(UsageText());
    help.Append(HelpText());
    for (const wchar_t* word : {L"decoders", L"gather", L"convert", L"properties", L"--help",
                                L"--folder-only", L"--exclude-folder", L"--include-file",
                                L"--exclude-file", L"--exclude-type", L"Exit codes"}) {
        EXPECT_NE(help.Find(word), 0) << Utf8(word);
    }
}

// What the row menu of the main window does to the list as a whole.
#include <gtest/gtest.h>

#include <string>

#include "foundation/settings.h"
#include "mainwindow/main_form.h"
#include "resources/ids.h"
#include "tests/dialogs/dialog_loop.h"
#include "tests/dialogs/open_list.h"
#include "tests/dialogs/row_watch.h"
#include "tests/mainwindow/main_form_stage.h"
#include "tests/support/decoder_folder.h"
#include "tests/support/scratch_folder.h"
#include "tests/support/scratch_registry.h"

namespace {

constexpr int rows = 300;

// A main window over a folder with that many files, of which nothing is to be read.
class RowCommands : public testing::Test {
protected:
    RowCommands() {
        ScratchRegistry::SetText(HKEY_CURRENT_USER, L"Software\\Brindlefen\\Tonequarry",
                                 L"zKR-FileSelector-Cols", L"Name\rSize");
        InitSettings();
        decoders.Add("one", "type=.abc|Some sound\n");
        for (int number = 0; number < rows; ++number)
            folder.AddFile((L"song" + std::to_wstring(number) + L".abc").c_str());
    }

    ScratchRegistry registry;
    clScriptedFolder decoders;
    ScratchFolder folder;
    const clCommandLine line{folder.Path().Chars()};
};

}  // namespace

// Each mark would have the control look the row up on the screen.
TEST_F(RowCommands, MarkTheWholeListAtTheirEndAndNoRowByItself) {
    WorkInDialog(
        IDC_FILE_LIST,
        [](HWND form) {
            const ShownList shown(form);
            ASSERT_EQ(shown.RowCount(), rows);
            ASSERT_TRUE(shown.IsTicked(rows - 1));
            for (const int command : {ID_UNCHECK_ALL, ID_CHECK_ALL, ID_INVERT_SELECTION}) {
                SCOPED_TRACE(command);
                ExpectOneMark(shown, command, rows);
                EXPECT_EQ(shown.IsTicked(rows - 1), command == ID_CHECK_ALL);
            }
        },
        [] { const frmMain form; });
}

#include <gtest/gtest.h>

#include "companions/common/extended_path_win32.h"

namespace companion {
namespace {

const std::wstring tail(250, L'x');

TEST(ExtendedPath, PrefixesLongPathsOnly) {
    struct Case {
        std::wstring path;
        std::wstring extended;
    };
    const std::wstring justShort = L"C:\\" + std::wstring(244, L'x');
    const Case cases[] = {
        {std::wstring(), std::wstring()},
        {L"C:\\a.wav", L"C:\\a.wav"},
        {justShort, justShort},
        {justShort + L"x", L"\\\\?\\" + justShort + L"x"},
        {L"C:\\" + tail + L".wav", L"\\\\?\\C:\\" + tail + L".wav"},
        {L"C:/a/../" + tail, L"\\\\?\\C:\\" + tail},
        {L"\\\\server\\share\\" + tail, L"\\\\?\\UNC\\server\\share\\" + tail},
        {L"\\\\?\\C:\\" + tail, L"\\\\?\\C:\\" + tail},
        {L"\\\\.\\C:\\" + tail, L"\\\\.\\C:\\" + tail},
    };
    for (const Case& row : cases)
        EXPECT_EQ(ExtendedPath(row.path), row.extended);
}

}  // namespace
}  // namespace companion

#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

namespace {

// Without it a crash would open a debugger window and hang the run.
LONG WINAPI EndOnCrash(EXCEPTION_POINTERS*) {
    TerminateProcess(GetCurrentProcess(), 99);
    return EXCEPTION_EXECUTE_HANDLER;
}

}  // namespace
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    SetUnhandledExceptionFilter(EndOnCrash);
#endif
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

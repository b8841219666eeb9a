#include <gtest/gtest.h>

#ifdef _WIN32
#include <windows.h>

namespace {

// Without it a crash would open a debugger window and hang the run.
LONG WINAPI EndOnCrash(EXCEPTION_POINTERS*) {
    TerminateProcess(GetCurrentProcess(), 99);
    return EXCEPTION_EXECUTE_HANDLER;
}

// After an overflow of the stack the one above is not called, and under Wine the
// process then ends with 0, as if its tests had passed.
LONG WINAPI EndOnOverflow(EXCEPTION_POINTERS* what) {
    if (what->ExceptionRecord->ExceptionCode != EXCEPTION_STACK_OVERFLOW)
        return EXCEPTION_CONTINUE_SEARCH;
    return EndOnCrash(what);
}

// For the last steps of a thread whose stack is full.
ULONG stackForTheEnd = 65536;

}  // namespace
#endif

int main(int argc, char** argv) {
#ifdef _WIN32
    SetUnhandledExceptionFilter(EndOnCrash);
    SetThreadStackGuarantee(&stackForTheEnd);
    AddVectoredExceptionHandler(1, EndOnOverflow);
#endif
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}

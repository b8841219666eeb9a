// Puts a test's function in the place of one that the test program imports from
// a DLL, so that calls of the platform can be watched and made to fail.
#pragma once

#include <cstdint>

// From its construction to its end every call of `function` that is compiled
// into this program goes to `replacement`; calls from inside DLLs do not. Fails
// the test when the program imports no such function.
class ImportStub {
public:
    template <class Function>
    ImportStub(const char* function, Function* replacement)
        : ImportStub(function, reinterpret_cast<std::uintptr_t>(replacement)) {}
    ImportStub(const ImportStub&) = delete;
    ImportStub& operator=(const ImportStub&) = delete;
    ~ImportStub();

    // The platform's own function, for a replacement that passes calls on.
    template <class Function>
    Function* Original() const {
        return reinterpret_cast<Function*>(original);
    }

private:
    ImportStub(const char* function, std::uintptr_t replacement);
    void Set(std::uintptr_t function) const;

    std::uintptr_t* slot = nullptr;
    std::uintptr_t original = 0;
};

#include "tests/support/allocations.h"

#include <atomic>
#include <cstdlib>
#include <new>

namespace {

std::atomic<std::size_t> blocks;
std::atomic<std::size_t> largest;
std::atomic<std::size_t> freed;

void NoteBlock(std::size_t bytes) {
    ++blocks;
    if (bytes > largest) largest = bytes;
}

void NoteFree(const volatile void* block) {
    if (block != nullptr) ++freed;
}

}  // namespace

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define TESTS_UNDER_ASAN
#endif
#endif
#ifdef __SANITIZE_ADDRESS__
#define TESTS_UNDER_ASAN
#endif

#ifdef TESTS_UNDER_ASAN

// An allocation that cannot be had is answered by null, as without the sanitizer.
extern "C" const char* __asan_default_options() {
    return "allocator_may_return_null=1";
}

// The sanitizer keeps its own operators, which check that new meets delete. Its
// header does not come with every compiler that has the library.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*onMalloc)(const volatile void*,
                                                                          std::size_t),
                                                         void (*onFree)(const volatile void*));

namespace {

const int hooks = __sanitizer_install_malloc_and_free_hooks(
    [](const volatile void*, std::size_t bytes) { NoteBlock(bytes); }, NoteFree);

}  // namespace

#else

void* operator new(std::size_t bytes) {
    NoteBlock(bytes);
    void* block = std::malloc(bytes > 0 ? bytes : 1);
    if (block == nullptr) throw std::bad_alloc();
    return block;
}

void* operator new[](std::size_t bytes) {
    return operator new(bytes);
}

void operator delete(void* block) noexcept {
    NoteFree(block);
    std::free(block);
}

void operator delete[](void* block) noexcept {
    operator delete(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

void operator delete[](void* block, std::size_t) noexcept {
    operator delete(block);
}

#endif

AllocationCount::AllocationCount() : first(blocks) {
    largest = 0;
}

std::size_t AllocationCount::Blocks() const {
    return blocks - first;
}

std::size_t AllocationCount::LargestBytes() const {
    return largest;
}

std::size_t LiveBlocks() {
    return blocks - freed;
}

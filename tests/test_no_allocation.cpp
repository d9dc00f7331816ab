// The library allocates nothing: after start-up (the family's init and a
// first sweep), a sweep over every public function on every family makes no
// call of malloc, calloc, realloc or any operator new.
//
// The counters replace the global operator new and interpose malloc, calloc
// and realloc on glibc's own entry points; they count only while a sweep is
// under way, so GoogleTest and the fixture may allocate around it.  Under
// AddressSanitizer or ThreadSanitizer the sanitizer owns malloc, and the
// tests skip.
#include <gtest/gtest.h>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <iterator>
#include <new>
#include <vector>

#include "family_scenarios.h"

#if defined(__has_feature)
#if __has_feature(address_sanitizer) || __has_feature(thread_sanitizer)
#define CVN_NP_SANITIZER_OWNS_MALLOC 1
#endif
#endif
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
#define CVN_NP_SANITIZER_OWNS_MALLOC 1
#endif

#ifndef CVN_NP_SANITIZER_OWNS_MALLOC
// glibc's allocator under its own names.
extern "C" void *__libc_malloc(std::size_t);
extern "C" void *__libc_calloc(std::size_t, std::size_t);
extern "C" void *__libc_realloc(void *, std::size_t);
#endif

namespace {

std::atomic<bool> counting{false};
std::atomic<uint64_t> allocations{0};

void count()
{
    if (counting.load(std::memory_order_relaxed))
        allocations.fetch_add(1, std::memory_order_relaxed);
}

// operator new takes its memory uncounted: it has counted itself.
void *uncounted_malloc(std::size_t size)
{
#ifdef CVN_NP_SANITIZER_OWNS_MALLOC
    return std::malloc(size);
#else
    return __libc_malloc(size);
#endif
}

void *allocate(std::size_t size)
{
    count();
    if (void *p = uncounted_malloc(size == 0 ? 1 : size))
        return p;
    throw std::bad_alloc();
}

void *allocate_aligned(std::size_t size, std::align_val_t align)
{
    count();
    const auto a = static_cast<std::size_t>(align);
    if (void *p = std::aligned_alloc(a, (size + a - 1) / a * a))
        return p;
    throw std::bad_alloc();
}

} // namespace

// Every replaceable allocating form reaches allocate(); the non-throwing
// ones through the throwing ones.
void *operator new(std::size_t size) { return allocate(size); }
void *operator new[](std::size_t size) { return allocate(size); }
void *operator new(std::size_t size, std::align_val_t a) { return allocate_aligned(size, a); }
void *operator new[](std::size_t size, std::align_val_t a) { return allocate_aligned(size, a); }
void *operator new(std::size_t size, const std::nothrow_t &) noexcept
{
    try {
        return allocate(size);
    } catch (...) {
        return nullptr;
    }
}
void *operator new[](std::size_t size, const std::nothrow_t &) noexcept
{
    try {
        return allocate(size);
    } catch (...) {
        return nullptr;
    }
}
void operator delete(void *p) noexcept { std::free(p); }
void operator delete[](void *p) noexcept { std::free(p); }
void operator delete(void *p, std::size_t) noexcept { std::free(p); }
void operator delete[](void *p, std::size_t) noexcept { std::free(p); }
void operator delete(void *p, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void *p, std::align_val_t) noexcept { std::free(p); }
void operator delete(void *p, std::size_t, std::align_val_t) noexcept { std::free(p); }
void operator delete[](void *p, std::size_t, std::align_val_t) noexcept { std::free(p); }

#ifndef CVN_NP_SANITIZER_OWNS_MALLOC
// The definitions below take the public names for the whole process.

extern "C" void *malloc(std::size_t size) noexcept
{
    count();
    return __libc_malloc(size);
}
extern "C" void *calloc(std::size_t n, std::size_t size) noexcept
{
    count();
    return __libc_calloc(n, size);
}
extern "C" void *realloc(void *p, std::size_t size) noexcept
{
    count();
    return __libc_realloc(p, size);
}
#endif

namespace {

// Counts the allocations `work` makes.
template <class Work> uint64_t AllocationsOf(Work &&work)
{
    allocations.store(0);
    counting.store(true);
    work();
    counting.store(false);
    return allocations.load();
}

class NoAllocation : public ::testing::Test {
  protected:
    void SetUp() override
    {
#ifdef CVN_NP_SANITIZER_OWNS_MALLOC
        GTEST_SKIP() << "the sanitizer runtime owns malloc here, so it cannot be counted; "
                        "the plain build runs these tests";
#endif
    }
};

// Opaque to the optimiser, so that an allocation paired with its release
// is not removed.
void *volatile kept = nullptr;

TEST_F(NoAllocation, CountersSeeEveryKindOfAllocation)
{
    using Alloc = void *(*)();
    const Alloc kinds[] = {
        [] { return std::malloc(24); },
        [] { return std::calloc(3, 8); },
        [] { return std::realloc(nullptr, 40); },
        [] { return ::operator new(16); },
        [] { return ::operator new[](32); },
        [] { return ::operator new(64, std::align_val_t{64}); },
    };
    for (size_t k = 0; k < std::size(kinds); ++k) {
        void *p = nullptr;
        EXPECT_EQ(AllocationsOf([&] { kept = p = kinds[k](); }), 1u) << "kind " << k;
        if (k < 3) {
            std::free(p);
        } else if (k == 5) {
            ::operator delete (p, std::align_val_t{64});
        } else {
            ::operator delete(p);
        }
    }
    // A library-style container growing counts as well.
    EXPECT_GT(AllocationsOf([] {
                  std::vector<int> v;
                  for (int i = 0; i < 100; ++i)
                      v.push_back(i);
                  kept = v.data();
              }),
              0u);
}

// After each family's start-up, a sweep of every public function, with
// every valid input of a populated card, allocates nothing and answers as
// the first sweep did.
TEST_F(NoAllocation, EveryPublicFunctionOnEveryFamilyAllocatesNothing)
{
    for (cvn_scenario::Scenario &s : cvn_scenario::AllScenarios()) {
        SCOPED_TRACE(s.name);
        cvn_scenario::Prepare(s);
        std::vector<uint64_t> first;
        cvn_scenario::Sweep(s, [&first](uint64_t v) { first.push_back(v); });
        ASSERT_GT(first.size(), 100u);

        std::vector<uint64_t> again(first.size());
        size_t n = 0;
        const uint64_t count = AllocationsOf([&] {
            cvn_scenario::Sweep(s, [&](uint64_t v) {
                if (n < again.size())
                    again[n] = v;
                ++n;
            });
        });
        EXPECT_EQ(count, 0u);
        EXPECT_EQ(n, first.size());
        EXPECT_EQ(again, first);
    }
}

} // namespace

#include "AllocationCounter.h"

#include <malloc.h>

#include <atomic>
#include <cerrno>

// glibc's own entry points; defining malloc and friends in the executable
// routes every library's allocations through the counters below.
extern "C" {
void *__libc_malloc(size_t size);
void *__libc_calloc(size_t count, size_t size);
void *__libc_realloc(void *pointer, size_t size);
void *__libc_memalign(size_t alignment, size_t size);
void __libc_free(void *pointer);
}

namespace {

std::atomic<std::size_t> held { 0 };
std::atomic<std::size_t> highest { 0 };
std::atomic<bool> enabled { false };

void added(void *pointer)
{
    if (!pointer || !enabled.load(std::memory_order_relaxed))
        return;
    const std::size_t now
        = held.fetch_add(malloc_usable_size(pointer), std::memory_order_relaxed) + malloc_usable_size(pointer);
    std::size_t seen = highest.load(std::memory_order_relaxed);
    while (now > seen && !highest.compare_exchange_weak(seen, now, std::memory_order_relaxed)) { }
}

void removed(void *pointer)
{
    if (pointer && enabled.load(std::memory_order_relaxed))
        held.fetch_sub(malloc_usable_size(pointer), std::memory_order_relaxed);
}

} // namespace

extern "C" {

void *malloc(size_t size)
{
    void *p = __libc_malloc(size);
    added(p);
    return p;
}

void *calloc(size_t count, size_t size)
{
    void *p = __libc_calloc(count, size);
    added(p);
    return p;
}

void *realloc(void *pointer, size_t size)
{
    removed(pointer);
    void *p = __libc_realloc(pointer, size);
    // A failed realloc leaves the old block in place.
    added(p ? p : (size == 0 ? nullptr : pointer));
    return p;
}

void free(void *pointer)
{
    removed(pointer);
    __libc_free(pointer);
}

void *memalign(size_t alignment, size_t size)
{
    void *p = __libc_memalign(alignment, size);
    added(p);
    return p;
}

void *aligned_alloc(size_t alignment, size_t size)
{
    return memalign(alignment, size);
}

int posix_memalign(void **out, size_t alignment, size_t size)
{
    void *p = memalign(alignment, size);
    if (!p)
        return ENOMEM;
    *out = p;
    return 0;
}

} // extern "C"

namespace AllocationCounter {

std::size_t current()
{
    return held.load(std::memory_order_relaxed);
}

std::size_t peak()
{
    return highest.load(std::memory_order_relaxed);
}

void setEnabled(bool on)
{
    enabled.store(on, std::memory_order_relaxed);
}

void resetPeak()
{
    highest.store(held.load(std::memory_order_relaxed), std::memory_order_relaxed);
}

} // namespace AllocationCounter

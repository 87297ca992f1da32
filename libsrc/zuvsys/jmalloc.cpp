// The tracked allocator: blocks, the accounting map, aligned blocks.
#include "zuvsys/jmalloc.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <mutex>
#include <vector>

namespace norva {

namespace {

constexpr std::size_t smallest = 8; // bytes of any block

// One slot of the accounting map; an empty ptr means the slot is free.
struct _memelem {
    void* ptr = nullptr;
    std::int64_t size = 0;
};

[[noreturn]] void fail() {
    std::fflush(nullptr);
    std::_Exit(-1);
}

// The map. Slots come from the C library, not from the allocator it accounts for.
struct account {
    _memelem* memstat = nullptr;
    std::size_t slots = 0;
    std::int64_t totalloc = 0;
    std::mutex lock; // blocks may be taken by the threads of a kernel

    // A free slot; the table starts with 500 and grows by 100.
    _memelem& getslot() {
        for (std::size_t i = 0; i < slots; i++)
            if (!memstat[i].ptr) return memstat[i];
        std::size_t more = slots == 0 ? 500 : slots + 100;
        auto* grown = static_cast<_memelem*>(std::realloc(memstat, more * sizeof(_memelem)));
        if (!grown) {
            std::fputs("\nError: Out of memory while updating memory map.\n", stdout);
            fail();
        }
        memstat = grown;
        std::size_t first = slots;
        for (slots = more; more > first; more--) memstat[more - 1] = {};
        return memstat[first];
    }

    _memelem& findslot(void* p, const char* message) {
        for (std::size_t i = 0; i < slots; i++)
            if (memstat[i].ptr == p) return memstat[i];
        std::fputs(message, stdout);
        fail();
    }
};

// The account when accounting is on, read from the environment at the first call; else empty. Never freed:
// blocks may be released by destructors that run at the very end.
account* getjenv() {
    static account* const acct = std::getenv("JUSED") ? new account : nullptr;
    return acct;
}

std::size_t raised(std::size_t n) {
    return n < smallest ? smallest : n;
}

} // namespace

void* jjmalloc(std::size_t n) {
    account* acct = getjenv();
    n = raised(n);
    // calloc takes large blocks as fresh pages, which are zero already: no byte is touched.
    void* p = std::calloc(1, n);
    if (p && acct) {
        std::lock_guard guard(acct->lock);
        acct->getslot() = {p, static_cast<std::int64_t>(n)};
        acct->totalloc += static_cast<std::int64_t>(n);
    }
    return p;
}

void* jjrealloc(void* p, std::size_t n) {
    if (!p) return jjmalloc(n);
    account* acct = getjenv();
    n = raised(n);
    if (!acct) return std::realloc(p, n);

    std::lock_guard guard(acct->lock);
    _memelem& slot = acct->findslot(p, "\nError: Bad pointer in jjrealloc().\n");
    void* moved = std::realloc(p, n);
    std::int64_t size = moved ? static_cast<std::int64_t>(n) : 0;
    acct->totalloc += size - slot.size;
    slot = {moved, size};
    return moved;
}

void* jmalloc(std::size_t n) {
    void* p = jjmalloc(n);
    if (!p) {
        std::printf("\nError: Out of memory in jmalloc on request for %zu bytes.\n", n);
        fail();
    }
    return p;
}

void* jrealloc(void* p, std::size_t n) {
    void* moved = jjrealloc(p, n);
    if (!moved) {
        std::printf("\nError: Out of memory in jrealloc request for %zu bytes.\n", n);
        fail();
    }
    return moved;
}

void jfree(void* p) {
    if (!p) return;
    if (account* acct = getjenv()) {
        std::lock_guard guard(acct->lock);
        _memelem& slot = acct->findslot(p, "\nError: Bad pointer in jfree().\n");
        acct->totalloc -= slot.size;
        slot = {};
    }
    std::free(p);
}

std::int64_t jused() {
    account* acct = getjenv();
    if (!acct) return 0;
    std::lock_guard guard(acct->lock);
    return acct->totalloc;
}

// ---- aligned blocks: pjmjf[i] is what jmalloc gave, palign[i] what was handed out

namespace {

std::size_t npal = 0;  // entries in use
std::size_t nsize = 0; // capacity counter
std::vector<void*> pjmjf, palign;

void* first_multiple(void* p, std::size_t nalign) {
    auto address = reinterpret_cast<std::uintptr_t>(p);
    std::uintptr_t over = nalign ? address % nalign : 0;
    return static_cast<char*>(p) + (over ? nalign - over : 0);
}

// Index in palign, npal when unknown.
std::size_t find_aligned(const void* ptr) {
    std::size_t i = 0;
    while (i < npal && palign[i] != ptr) i++;
    return i;
}

std::size_t sum(std::size_t a, std::size_t b) {
    return a > std::numeric_limits<std::size_t>::max() - b ? std::numeric_limits<std::size_t>::max() : a + b;
}

} // namespace

void* jmalloc_align(std::size_t nbytes, std::size_t nalign) {
    if (npal <= nsize) {
        nsize += 100;
        pjmjf.resize(nsize);
        palign.resize(nsize);
    }
    pjmjf[npal] = jmalloc(sum(nbytes, nalign));
    palign[npal] = first_multiple(pjmjf[npal], nalign);
    return palign[npal++];
}

void* jrealloc_align(void* ptr, std::size_t nbytes, std::size_t nalign) {
    std::size_t i = find_aligned(ptr);
    if (i == npal) return ptr;
    pjmjf[i] = jrealloc(pjmjf[i], sum(nbytes, nalign));
    palign[i] = first_multiple(pjmjf[i], nalign);
    return palign[i];
}

void jfree_align(void* ptr) {
    std::size_t found = find_aligned(ptr);
    if (found == npal) return;
    jfree(pjmjf[found]);
    // Kept on purpose: the shift starts at the found entry itself and overwrites the one below it.
    for (std::size_t i = found; i < npal; i++) {
        if (i == 0) continue; // nothing lies below the first
        pjmjf[i - 1] = pjmjf[i];
        palign[i - 1] = palign[i];
    }
    npal--;
}

} // namespace norva

#pragma once
// jbuf<T>: an owning, zero-filled block on the tracked allocator. It stands wherever the program keeps data
// that lives as long as a record does, so jused() sees it and nothing leaks.

#include "zuvsys/jmalloc.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <type_traits>
#include <utility>

namespace norva {

template <class T> class jbuf {
    static_assert(std::is_trivially_copyable_v<T>, "jbuf holds plain data");

public:
    jbuf() = default;
    explicit jbuf(std::size_t n) { reset(n); }
    jbuf(const jbuf& other) { assign(other.span()); }
    jbuf(jbuf&& other) noexcept : p_(std::exchange(other.p_, nullptr)), n_(std::exchange(other.n_, 0)) {}
    jbuf& operator=(const jbuf& other) {
        if (this != &other) assign(other.span());
        return *this;
    }
    jbuf& operator=(jbuf&& other) noexcept {
        std::swap(p_, other.p_);
        std::swap(n_, other.n_);
        return *this;
    }
    ~jbuf() { clear(); }

    // n zeros; what was held is gone. A size that no memory holds ends the program in jmalloc.
    void reset(std::size_t n) {
        clear();
        p_ = static_cast<T*>(jmalloc(n <= SIZE_MAX / sizeof(T) ? n * sizeof(T) : SIZE_MAX));
        n_ = n;
    }
    void assign(std::span<const T> from) {
        T* fresh = static_cast<T*>(jmalloc(from.size_bytes()));
        if (!from.empty()) std::memcpy(fresh, from.data(), from.size_bytes());
        clear();
        p_ = fresh;
        n_ = from.size();
    }
    void clear() {
        if (p_) jfree(p_);
        p_ = nullptr;
        n_ = 0;
    }

    bool allocated() const { return p_ != nullptr; }
    explicit operator bool() const { return p_ != nullptr; }
    std::size_t size() const { return n_; }
    T* data() { return p_; }
    const T* data() const { return p_; }
    T& operator[](std::size_t i) { return p_[i]; }
    const T& operator[](std::size_t i) const { return p_[i]; }
    T* begin() { return p_; }
    T* end() { return p_ + n_; }
    const T* begin() const { return p_; }
    const T* end() const { return p_ + n_; }
    std::span<T> span() { return {p_, n_}; }
    std::span<const T> span() const { return {p_, n_}; }

private:
    T* p_ = nullptr;
    std::size_t n_ = 0;
};

} // namespace norva

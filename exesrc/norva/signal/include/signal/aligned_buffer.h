#pragma once
// A block of floats on a cache line boundary, for tables and for scratch that is kept from call to call.

#include <cstddef>
#include <new>
#include <utility>

namespace norva {

class aligned_buffer {
public:
    aligned_buffer() = default;
    explicit aligned_buffer(std::size_t n) { make_room(n); }
    aligned_buffer(aligned_buffer&& other) noexcept
        : data_(std::exchange(other.data_, nullptr)), size_(std::exchange(other.size_, 0)) {}
    aligned_buffer& operator=(aligned_buffer&& other) noexcept {
        std::swap(data_, other.data_);
        std::swap(size_, other.size_);
        return *this;
    }
    aligned_buffer(const aligned_buffer&) = delete;
    aligned_buffer& operator=(const aligned_buffer&) = delete;
    ~aligned_buffer() { release(); }

    // At least n floats, whose content is arbitrary when there were fewer before. Never shrinks.
    float* make_room(std::size_t n) {
        if (n > size_) {
            release();
            data_ = static_cast<float*>(::operator new(n * sizeof(float), line));
            size_ = n;
        }
        return data_;
    }
    float* data() { return data_; }
    const float* data() const { return data_; }

private:
    static constexpr std::align_val_t line{64};
    void release() {
        if (data_) ::operator delete(data_, line);
        data_ = nullptr;
        size_ = 0;
    }
    float* data_ = nullptr;
    std::size_t size_ = 0;
};

} // namespace norva

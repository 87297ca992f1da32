#pragma once
// Writing and reading the records of the image and the cut processor: 32-bit words, reals by their bit
// patterns.

#include <algorithm>
#include <bit>
#include <cstdint>
#include <initializer_list>
#include <span>
#include <string>
#include <vector>

namespace norva {

// Words appended one after another.
struct record_packer {
    std::vector<std::int32_t>& words;

    void ints(std::initializer_list<int> values) {
        for (int v : values) words.push_back(v);
    }
    void reals(std::initializer_list<float> values) {
        for (float v : values) words.push_back(std::bit_cast<std::int32_t>(v));
    }
    void reals(std::span<const float> values) {
        const std::size_t at = words.size();
        words.resize(at + values.size());
        std::ranges::transform(values, words.begin() + static_cast<std::ptrdiff_t>(at),
                               [](float v) { return std::bit_cast<std::int32_t>(v); });
    }
};

// Words taken one after another; beyond the end they are 0 and `good` falls.
struct record_reader {
    std::span<const std::int32_t> words;
    bool good = true;

    int integer() {
        if (words.empty()) {
            good = false;
            return 0;
        }
        const int value = words.front();
        words = words.subspan(1);
        return value;
    }
    float real() { return std::bit_cast<float>(integer()); }
    std::span<const std::int32_t> take(std::int64_t n) {
        if (n < 0 || n > std::ssize(words)) {
            good = false;
            return {};
        }
        const auto taken = words.first(static_cast<std::size_t>(n));
        words = words.subspan(static_cast<std::size_t>(n));
        return taken;
    }
    std::vector<float> reals(std::int64_t n) {
        const auto taken = take(n);
        std::vector<float> values(taken.size());
        std::ranges::transform(taken, values.begin(), [](std::int32_t w) { return std::bit_cast<float>(w); });
        return values;
    }
};

// The message of a result that tells of a failure: its length in word 1, at most `most` characters from word
// 2 on.
inline std::string record_message(std::span<const std::int32_t> out, std::size_t most) {
    if (out.size() < 2) return {};
    const auto words = out.subspan(2, std::min<std::size_t>(out.size() - 2, most / 4));
    std::string text(reinterpret_cast<const char*>(words.data()), words.size_bytes());
    text.resize(std::min(text.size(), static_cast<std::size_t>(std::max(out[1], 0))));
    return text;
}

} // namespace norva

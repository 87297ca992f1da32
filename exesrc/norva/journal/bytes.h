#pragma once
// Little-endian numbers in a string of bytes. The reader never passes the end: what is missing reads as 0 and
// clears `ok`.

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>

namespace norva {

inline void put_int(std::string& bytes, std::int32_t value) {
    const auto bits = static_cast<std::uint32_t>(value);
    for (int shift = 0; shift < 32; shift += 8) bytes.push_back(static_cast<char>(bits >> shift & 0xff));
}

inline void put_double(std::string& bytes, double value) {
    const auto bits = std::bit_cast<std::uint64_t>(value);
    put_int(bytes, static_cast<std::int32_t>(bits));
    put_int(bytes, static_cast<std::int32_t>(bits >> 32));
}

struct byte_reader {
    std::string_view rest;
    bool ok = true;

    // The next n bytes; fewer than n left is the end.
    std::string_view take(std::size_t n) {
        if (rest.size() < n) {
            ok = false;
            rest = {};
            return {};
        }
        const std::string_view taken = rest.substr(0, n);
        rest.remove_prefix(n);
        return taken;
    }
    std::int32_t take_int() {
        const std::string_view four = take(4);
        std::uint32_t bits = 0;
        for (std::size_t i = 0; i < four.size(); i++)
            bits |= static_cast<std::uint32_t>(static_cast<unsigned char>(four[i])) << (8 * i);
        return static_cast<std::int32_t>(bits);
    }
    double take_double() {
        const auto low = static_cast<std::uint32_t>(take_int());
        const auto high = static_cast<std::uint32_t>(take_int());
        return std::bit_cast<double>(static_cast<std::uint64_t>(high) << 32 | low);
    }
};

} // namespace norva

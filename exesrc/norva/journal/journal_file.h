#pragma once
// The bytes of a journal file: four records, each between two copies of its length (see journal/store.h).

#include "journal/store.h"

#include <array>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace norva {

struct journal_image {
    std::array<char, JOURNAL_HEAD_BYTES> head{};
    std::vector<std::int32_t> indx; // place of each record in ir
    std::vector<std::int32_t> ir;
};

// Greatest size of a legal file.
constexpr std::size_t JOURNAL_MAX_FILE =
    4 * 8 + JOURNAL_HEAD_BYTES + 8 + 4 * (JOURNAL_MAX_INDEX + 1) + 4 * std::size_t{JOURNAL_MAX_WORDS};

std::string encode_journal(std::string_view head, std::span<const std::int32_t> indx,
                           std::span<const std::int32_t> ir);

// False unless the four records are there in full, hold at least one step, and every step lies inside the
// words, behind the one before it, with a tag of 0 to 89. Bytes behind the fourth record are ignored.
bool decode_journal(std::string_view bytes, journal_image& image);

} // namespace norva

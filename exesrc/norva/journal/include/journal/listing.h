#pragma once
// The journal as text: one line for each step, with the image's own steps above the line that closes the
// image.

#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace norva {

constexpr int JRNL_MAX_LINES = 600; // steps and image substeps

struct journal_listing {
    std::string text;
    std::vector<std::string> messages; // what is wrong with the records, for popmsg
};

// The text of a step's tag; empty for tags without one.
std::string step_text(int tag);

// Builds the text from the store's reply to a list request. Any array is safe; it is read as far as it goes.
journal_listing list_journal(std::span<const std::int32_t> ary);

// The same, with the messages shown.
void get_jrnl_info(std::string& epage, std::span<const std::int32_t> ary);

} // namespace norva

// The bytes of a journal file.
#include "journal_file.h"

#include "bytes.h"

namespace norva {

static void put_record(std::string& bytes, std::string_view content) {
    const auto length = static_cast<std::int32_t>(content.size());
    put_int(bytes, length);
    bytes += content;
    put_int(bytes, length);
}

static std::string words_to_bytes(std::span<const std::int32_t> words) {
    std::string bytes;
    bytes.reserve(4 * words.size());
    for (const std::int32_t word : words) put_int(bytes, word);
    return bytes;
}

std::string encode_journal(std::string_view head, std::span<const std::int32_t> indx,
                           std::span<const std::int32_t> ir) {
    const std::int32_t counts[] = {static_cast<std::int32_t>(indx.size()) - 1,
                                   static_cast<std::int32_t>(ir.size())};
    std::string bytes, padded_head(head.substr(0, JOURNAL_HEAD_BYTES));
    padded_head.resize(JOURNAL_HEAD_BYTES);
    bytes.reserve(JOURNAL_HEAD_BYTES + 40 + 4 * (indx.size() + ir.size()));
    put_record(bytes, padded_head);
    put_record(bytes, words_to_bytes(counts));
    put_record(bytes, words_to_bytes(indx));
    put_record(bytes, words_to_bytes(ir));
    return bytes;
}

// The content of the next record, which must have exactly n bytes.
static byte_reader take_record(byte_reader& file, std::size_t n) {
    const bool starts = file.take_int() == static_cast<std::int32_t>(n);
    byte_reader record{starts ? file.take(n) : std::string_view{}};
    const bool ends = file.take_int() == static_cast<std::int32_t>(n);
    record.ok = file.ok = file.ok && starts && ends;
    return record;
}

static std::vector<std::int32_t> take_words(byte_reader record) {
    std::vector<std::int32_t> words(record.rest.size() / 4);
    for (std::int32_t& word : words) word = record.take_int();
    return words;
}

static bool records_lie_in_order(const journal_image& image) {
    std::int64_t end = 0; // of the record before
    for (const std::int32_t start : image.indx) {
        if (start < end || start + std::int64_t{3} > std::ssize(image.ir)) return false;
        const std::int32_t tag = image.ir[start], na = image.ir[start + 2];
        if (tag < 0 || tag >= JOURNAL_BEGIN || na < 0) return false;
        end = start + std::int64_t{3} + na;
        if (end > std::ssize(image.ir)) return false;
    }
    return true;
}

bool decode_journal(std::string_view bytes, journal_image& image) {
    byte_reader file{bytes};
    const std::string_view head = take_record(file, JOURNAL_HEAD_BYTES).rest;
    byte_reader counts = take_record(file, 8);
    if (!file.ok) return false;
    const std::int32_t nc = counts.take_int(), np = counts.take_int();
    if (nc < 0 || nc > JOURNAL_MAX_INDEX || np < 0 || np > JOURNAL_MAX_WORDS) return false;

    image.indx = take_words(take_record(file, 4 * (static_cast<std::size_t>(nc) + 1)));
    image.ir = take_words(take_record(file, 4 * static_cast<std::size_t>(np)));
    if (!file.ok || !records_lie_in_order(image)) return false;
    head.copy(image.head.data(), image.head.size());
    return true;
}

} // namespace norva

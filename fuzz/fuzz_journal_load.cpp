// Whatever a journal file, a crash file, a list reply or an array of image actions may hold, reading it stays
// inside it. The first byte of the input chooses:
//
//   0 journal file | 1 its INDX and IR only, the framing is made here | 2 crash file | 3 list reply, actions

#include "journal/crash_file.h"
#include "journal/listing.h"
#include "journal/record.h"
#include "journal/store.h"
#include "journal/tag_ary.h"
#include "state/calls.h"

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>

using namespace norva;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

journal_words ask(const journal_words& in) {
    journal_words out;
    journal(in, out);
    return out;
}

journal_words to_words(const std::string& bytes) {
    journal_words words(bytes.size() / 4);
    if (!words.empty()) std::memcpy(words.data(), bytes.data(), 4 * words.size());
    return words;
}

std::string framed(const std::string& content) {
    const auto length = static_cast<std::int32_t>(content.size());
    const std::string four(reinterpret_cast<const char*>(&length), 4);
    return four + content + four;
}

// A byte gives the number of records, a word each its place, the rest the words of the records.
std::string make_file(const std::string& data) {
    const std::size_t n =
        std::min<std::size_t>(data.empty() ? 0 : static_cast<unsigned char>(data[0]) + 1, data.size() / 4);
    const std::string body = data.substr(std::min<std::size_t>(1, data.size()));
    const std::string indx = body.substr(0, 4 * n),
                      ir = body.substr(indx.size(), (body.size() - indx.size()) / 4 * 4);
    const std::int32_t counts[] = {static_cast<std::int32_t>(indx.size() / 4) - 1,
                                   static_cast<std::int32_t>(ir.size() / 4)};
    return framed("raw.pfx" + std::string(193, '\0')) +
           framed(std::string(reinterpret_cast<const char*>(counts), 8)) + framed(indx) + framed(ir);
}

void read_record(std::span<const std::int32_t> record) {
    journal_step step;
    if (read_step(record, step)) {
        require(step.nf >= 1 && step.nt >= 1 && step.mc_ptr >= 0);
        require(step.track_file.size() <= TRK_NAME_MAX);
        if (step.jary) {
            require(static_cast<std::size_t>(step.jary[0]) <= step.jary.size());
            walk_actions(step.jary.span());
        }
    }
    mcfile mc;
    if (read_mc_record(record, mc).empty()) {
        require(mc_is_sound(mc));
        const journal_words again = build_mc_record(mc, mc.nrecs);
        require(again.size() <= record.size() + 4);
        require(std::equal(again.begin() + 3, again.end() - 4, record.begin() + 3));
    }
}

void load_journal(const std::string& bytes) {
    static const std::string name = [] {
        std::string pattern = (std::filesystem::temp_directory_path() / "norva-fuzz-XXXXXX").string();
        require(mkdtemp(pattern.data()) != nullptr);
        return pattern + "/fuzz.jou";
    }();
    std::ofstream(name, std::ios::binary) << bytes;
    ask({JOURNAL_ABORT});
    journal_words in(2 + (name.size() + 3) / 4);
    in[0] = JOURNAL_LOAD;
    in[1] = static_cast<std::int32_t>(name.size());
    put_text(std::span(in).subspan(2), name);
    const journal_words head = ask(in);
    if (head[0] == -1) {
        require(!journal_text(head).empty());
        require(ask({JOURNAL_LIST, 10}) == journal_words{-1});
        return;
    }
    journal_head_name(head);
    read_record(std::span(head).subspan(51));
    const journal_words list = ask({JOURNAL_LIST, JOURNAL_MAX_WORDS});
    list_journal(list);
    const int nc = list[0];
    for (int i = 0; i <= nc; i++) {
        const journal_words reply = i % 2 || i == 0 ? ask({JOURNAL_GOTO, i}) : ask({JOURNAL_STEP, 1});
        require(reply[0] == i);
        read_record(std::span(reply).subspan(1));
    }
    // A new step behind the middle one; its file cannot be written, which the store survives.
    journal_words begin(69);
    begin[0] = JOURNAL_BEGIN;
    put_text(std::span(begin).subspan(51), "/nonexistent/fuzz");
    require(ask(begin).empty());
    ask({JOURNAL_GOTO, nc / 2});
    const journal_words step = ask({3, 0, 1, 7});
    require(step[0] == nc / 2 + 1 || nc / 2 == JOURNAL_MAX_INDEX || journal_words_left() < 4);
}

void read_crash_file(const std::string& bytes) {
    int count = -5;
    mcfile mc;
    if (!decode_crash_file(bytes, count, mc)) {
        require(count == -5 && mc.nrecs == 0);
        return;
    }
    const std::string again = encode_crash_file(count, mc);
    require(bytes.compare(0, again.size(), again) == 0);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    app_hooks.popmsg = [](const std::string&) {};
    journal_store_hooks.write_failed = [](const char*) {};
    if (size == 0) return 0;
    const std::string bytes(reinterpret_cast<const char*>(data) + 1, size - 1);
    switch (data[0] % 4) {
    case 0: load_journal(bytes); break;
    case 1: load_journal(make_file(bytes)); break;
    case 2: read_crash_file(bytes); break;
    default:
        list_journal(to_words(bytes));
        walk_actions(to_words(bytes));
        journal_text(to_words(bytes));
    }
    return 0;
}

// The image processor: dispatch of an action, its place among the stored actions, replay.
#include "image/proimag.h"

#include "proimag_int.h"

#include <algorithm>
#include <cstring>
#include <iterator>

namespace norva {
namespace image {
namespace {

struct action {
    int mode;
    const char* name;
    int words = 0; // of the record; of action 8 without the cut's stored journal
    failure (*act)(processor& p, words_in words) = nullptr;
    failure (*result)(processor& p, words_out out) = nullptr;
    failure (*request)(processor& p, words_in in,
                       words_out out) = nullptr; // asked for, in place of the above
};

constexpr action actions[] = {
    {0, "Initialization", PI_DATA_WORD, nullptr, result_image, do_init},
    {1, "Flop Image", 2, act_flop, result_image},
    {2, "Change Weight"}, // not activated, as all rows without handlers
    {3, "Change Peak Scaling", 5, act_peak_scaling, result_image},
    {4, "Edit", 5, act_edit, result_image},
    {5, "Interpolate", 3, act_interpolate, result_image},
    {6, "Peak Parameters", 3, act_peak_parameters, result_image},
    {7, "Status", 1, act_nothing, result_status},
    {8, "Compute Cut", 6, act_cut, result_image},
    {9, "Center Image", 6, act_center, result_image},
    {10, "Polar Format Initialization", PI_POLAR_DATA_WORD, nullptr, result_image, do_polar_init},
    {11, "", 1, act_nothing, result_data},
    {12, ""},
    {13, ""},
    {14, ""},
    {15, ""},
    {16, "", 2, nullptr, nullptr, do_go},
    {17, "", 2, nullptr, nullptr, do_step},
    {18, "", 1, nullptr, nullptr, do_store_cut},
    {19, "", 1, act_nothing, result_left, do_export},
    {20, "", 2, nullptr, nullptr, do_restore},
    {21, "", 1, nullptr, nullptr, do_end},
};
constexpr int action_count = static_cast<int>(std::size(actions));

constexpr bool rows_in_order() {
    for (int i = 0; i < action_count; i++) {
        if (actions[i].mode != i) return false;
    }
    return action_count == PI_END + 1;
}
static_assert(rows_in_order());

processor the_one;

// A step: the action at work, its words kept or passed over, then it counts.
failure make_step(processor& p, const action& row, words_in record) {
    if (failure text = row.act(p, record.subspan(1, static_cast<std::size_t>(row.words) - 1))) return text;
    const bool cut = row.mode == PI_CUT;
    if (p.fresh) {
        p.actions.resize(p.np);
        p.actions.insert(p.actions.end(), record.begin(), record.begin() + row.words);
        if (cut) p.actions.push_back(0); // no stored journal yet
    }
    p.cut_at = p.np + static_cast<std::size_t>(row.words);
    p.np = p.fresh ? p.actions.size() : p.np + stored_length(p.actions, p.np);
    p.is++;
    p.last = row.mode;
    if (row.mode != PI_STATUS) p.il = row.mode;
    if (p.fresh) p.ns = p.is;
    return nullptr;
}

failure fresh_step(processor& p, const action& row, words_in in, words_out out) {
    if (in.size() < static_cast<std::size_t>(row.words)) return SHORT_RECORD;
    if (p.journal_words() > PI_JOURNAL_WORDS) return JOURNAL_FULL;
    p.target = p.is + 1;
    p.own.clear();
    if (failure text = make_step(p, row, in)) return text;
    return row.result(p, out);
}

failure run(processor& p, words_in in, words_out out) {
    const int mode = in.empty() ? -1 : in[0];
    if (!p.ready && mode != PI_INIT && mode != PI_POLAR) return NOT_INITIALIZED;
    if (mode < 0 || mode >= action_count) return INVALID_MODE;
    const action& row = actions[mode];
    p.fresh = true;
    if (row.request) return row.request(p, in, out);
    return row.act ? fresh_step(p, row, in, out) : NOT_ACTIVATED;
}

void write_failure(failure text, words_out out) {
    char message[PI_MESSAGE_CHARACTERS];
    const std::size_t length = std::min(std::strlen(text), sizeof message);
    std::memset(message, ' ', sizeof message);
    std::memcpy(message, text, length);
    out[0] = -1;
    out[1] = static_cast<std::int32_t>(length);
    std::memcpy(&out[2], message, sizeof message);
}

// Steps from the present one on, without a result, until p.target.
failure advance(processor& p) {
    p.fresh = false;
    while (p.is < p.target) {
        if (stored_length(p.actions, p.np) == 0) return INVALID_MODE;
        const action& row = actions[p.actions[p.np]];
        p.own.clear();
        if (failure text = make_step(p, row, words_in(p.actions).subspan(p.np))) return text;
    }
    return nullptr;
}

} // namespace

std::size_t stored_length(words_in words, std::size_t place) {
    if (place >= words.size() || words[place] < 0 || words[place] >= action_count) return 0;
    const action& row = actions[words[place]];
    const std::size_t left = words.size() - place;
    auto length = static_cast<std::size_t>(row.words);
    if (!row.act || length > left) return 0;
    if (row.mode != PI_CUT) return length;
    if (length == left) return 0;
    const std::int32_t journal = words[place + length++];
    return journal >= 0 && static_cast<std::size_t>(journal) <= left - length
               ? length + static_cast<std::size_t>(journal)
               : 0;
}

failure replay(processor& p, int target, words_out out) {
    const int before = p.is;
    if (target <= p.is) to_first(p);
    p.target = target;
    if (failure text = advance(p)) {
        // Back to where it began, over steps that have been done before.
        to_first(p);
        p.target = before;
        if (advance(p)) p.ready = false;
        return text;
    }
    return actions[p.last].result(p, out);
}

void keep_first(processor& p) {
    if (!p.kept) std::copy_n(p.qa.data(), 2 * p.samples(), p.qc.make_room(2 * p.samples()));
    p.kept = p.touched = true;
}

void to_first(processor& p) {
    img = p.first;
    if (p.touched) std::copy_n(p.qc.data(), 2 * p.samples(), p.qa.make_room(2 * p.samples()));
    p.touched = p.edited = false;
    p.is = 0;
    p.il = p.last = p.init;
    p.np = 0;
    p.own.clear();
}

} // namespace image

void proimag(std::span<const std::int32_t> in, std::span<std::int32_t> out) {
    if (image::failure text = image::run(image::the_one, in, out)) image::write_failure(text, out);
}

void proimagpar(std::span<float, 6> out) {
    const image::processor& p = image::the_one;
    const float values[] = {p.wct, p.dct, img.xpv, img.ypv, img.ang, img.apmn};
    std::ranges::copy(values, out.begin());
}

const char* pi_action_name(int mode) {
    return mode >= 0 && mode < image::action_count ? image::actions[mode].name : "";
}

} // namespace norva

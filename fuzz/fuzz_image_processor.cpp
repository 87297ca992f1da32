// Whatever records the image processor is given, it stays inside them and inside its arrays, what it returns
// can be taken apart, and a failure leaves the image as it was. The input is a run of records; each begins
// with a byte for the action and one for how its words are made:
//
//   bit 0  words are taken as they come (else whole numbers and reals of a sensible size, a byte each)
//   bit 1  the record is cut short
//   bit 2  actions taken out of the image are put back, with some words changed

#include "image/proimag.h"
#include "journal/tag_ary.h"
#include "state/calls.h"
#include "state/image_cut.h"

#include <algorithm>
#include <bit>
#include <cstdlib>
#include <cstring>

using namespace norva;

namespace {

using words = std::vector<std::int32_t>;

void require(bool holds) {
    if (!holds) std::abort();
}

struct input {
    const std::uint8_t* data;
    std::size_t left;

    int byte() {
        if (left == 0) return 0;
        left--;
        return *data++;
    }
    std::int32_t word() {
        std::uint32_t value = 0;
        for (int k = 0; k < 4; k++) value = value << 8 | static_cast<std::uint32_t>(byte());
        return static_cast<std::int32_t>(value);
    }
    std::int32_t real() { return std::bit_cast<std::int32_t>((static_cast<float>(byte()) - 128) / 4); }
};

// Whole numbers and reals of each action's record: 'i', 'r'.
const char* layout(int action) {
    switch (action) {
    case PI_INIT: return "iiiiiiiiirr";
    case PI_FLOP:
    case PI_GO:
    case PI_STEP: return "i";
    case PI_PEAK_SCALING: return "iirr";
    case PI_EDIT: return "rrrr";
    case PI_INTERPOLATE: return "ii";
    case PI_PEAK_PARAMETERS: return "rr";
    case PI_CUT: return "rrrrr";
    case PI_CENTER: return "rrrri";
    case PI_POLAR: return "iiiiiiiiirrirrrrrrrrr";
    case PI_RESTORE: return "iiiiiiiiiiiiiiiiiiii";
    default: return "";
    }
}

// Sizes that take long are left to the tests of the limits.
constexpr int most_samples = 4096;

bool takes_long(const words& in) {
    if (in.size() < 8) return false;
    std::int64_t n = 1;
    for (int k : {1, 2, 6, 7})
        n = std::clamp<std::int64_t>(n * std::max(in[static_cast<std::size_t>(k)], 1), 0, 1 << 30);
    return n > most_samples && n <= 4 * PI_MAX_SAMPLES;
}

words make_record(input& from, int action, int how) {
    words in = {action};
    for (const char* kind = layout(action); *kind; kind++)
        in.push_back(how & 1 ? from.word() : *kind == 'r' ? from.real() : from.byte() % 40 - 3);
    if (action == PI_INIT || action == PI_POLAR) {
        if (how & 1 ? takes_long(in) : in[1] * in[2] * in[6] * in[7] > most_samples) in[6] = in[7] = 1;
        if (!(how & 1)) in[9] = 1 + (in[9] & 3);
        const std::int64_t n = 2 * static_cast<std::int64_t>(in[1]) * in[2];
        for (std::int64_t k = 0; k < n && k < 2 * most_samples; k++) in.push_back(from.real());
    }
    if (how & 2)
        in.resize(in.size() -
                  std::min<std::size_t>(in.size() - 1, static_cast<std::size_t>(from.byte() % 8)));
    return in;
}

words out(PI_RESULT_WORDS), before(PI_RESULT_WORDS);
pi_result result;

bool act(const words& in) {
    out[0] = out[1] = 0;
    proimag(in, out);
    return pi_unpack(out, result);
}

// All that the present step returns.
words present() {
    const words again = {PI_STEP, 0};
    require(act(again) || result.message.starts_with("***Init"));
    const std::size_t n = PI_HEADER_WORDS + 3 * result.xp.size() + result.a.size() + result.cut.size();
    return {out.begin(), out.begin() + static_cast<std::ptrdiff_t>(n)};
}

void run_one(input& from) {
    const int action = from.byte() % 24 - 1, how = from.byte();
    const words in = make_record(from, action, how), standing = present();
    const bool ready = result.what != pi_result::FAILED;
    if (!act(in)) {
        require(!result.message.empty() && result.message.size() <= PI_MESSAGE_CHARACTERS);
        require(present() == standing);
        return;
    }
    for (float v : result.a) require(v >= 0 && v <= 1);
    if (action == PI_INTERPOLATE && result.a.size() > 8 * most_samples)
        act({PI_END}); // what follows takes long
    if (action == PI_CUT && how & 4) {
        cutj.jf = from.byte() & 1;
        cutj.ns = from.byte();
        cutj.ir.assign(static_cast<std::size_t>(from.byte() % 16) + 1, 26);
        cutj.np = from.byte() % 18 - 1;
        act({PI_STORE_CUT});
    }
    if (action == PI_EXPORT && ready && how & 4 && result.nn > 0) {
        jbuf<std::int32_t> taken = pi_make_jary(result, 0);
        words ja(taken.begin(), taken.begin() + taken[0]);
        walk_actions(ja);
        for (int k = from.byte() % 4; k > 0; k--)
            ja[static_cast<std::size_t>(from.byte()) % ja.size()] = from.byte() - 20;
        words init = make_record(from, PI_INIT, 0);
        act(init);
        proimag_parms pip;
        pip.mode = PI_RESTORE;
        pip.nf = pip.nt = 1;
        const pi_packed packed = pi_pack(pip, {.jary = ja});
        require(packed.record.empty() == !packed.refusal.empty());
        if (!packed.record.empty() && act(packed.record)) act({PI_GO, 100});
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    app_hooks.popmsg = [](const std::string&) {};
    act({PI_END});
    cutj = {};
    input from{data, size};
    act(make_record(from, PI_INIT, 0));
    for (int k = 0; k < 24 && from.left > 0; k++) run_one(from);
    return 0;
}

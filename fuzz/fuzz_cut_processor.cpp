// Whatever records and stored actions the cut processor is given, it stays inside its arrays, and its results
// hold together. The input is a run of actions: a byte chooses one, the bytes behind it make its words.

#include "cut/pc_apply.h"
#include "cut/procut.h"
#include "state/calls.h"
#include "state/image_cut.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdlib>

using namespace norva;

namespace {

void require(bool holds) {
    if (!holds) std::abort();
}

struct source {
    const std::uint8_t* at;
    const std::uint8_t* end;

    int byte() { return at < end ? *at++ : 0; }
    std::int32_t word() {
        std::uint32_t w = 0;
        for (int k = 0; k < 4; k++) w = w << 8 | static_cast<std::uint32_t>(byte());
        return static_cast<std::int32_t>(w);
    }
    // A place on an axis -2..2 or -16..16, or any bits at all.
    std::int32_t real() {
        const int kind = byte(), value = byte();
        if (kind > 250) return word();
        return std::bit_cast<std::int32_t>((static_cast<float>(value) - 128) / (kind % 2 ? 64.0F : 8.0F));
    }
    std::int32_t small() {
        const int value = byte();
        return value > 250 ? word() : value % 10;
    }
};

void send(const std::vector<std::int32_t>& in) {
    static std::vector<std::int32_t> out(PC_RESULT_WORDS);
    procut(in, out);
    pc_result r;
    const bool good = pc_unpack(out, r);
    require(good == r.message.empty() && r.message.rfind("Damaged", 0) != 0);
    require(cutj.ir.size() >= static_cast<std::size_t>(std::max(cutj.np, 0)) || !good);
    if (r.what != pc_result::COMMON) return;
    for (const pc_curve* c : {&r.cut, &r.transform}) {
        require(std::isfinite(c->scale) && c->scale > 0);
        require(c->u.size() <= PC_MAX_SAMPLES && c->q.size() == c->u.size());
        for (float a : c->a) require(std::isfinite(a));
    }
}

void initial(source& s, bool raw) {
    static constexpr int counts[] = {1, 2, 3, 50, 64, 100, 128};
    const int pick = s.byte();
    // Long ones are slow, and no different.
    const int n = pick > 250   ? s.word()
                  : pick > 248 ? 8192
                  : pick > 246 ? 2048
                               : counts[pick % std::size(counts)];
    const int fineness = s.byte();
    const auto dc = std::bit_cast<std::int32_t>(
        1.0F / static_cast<float>(1 << (fineness > 240 ? fineness % 8 : fineness % 3)));
    std::vector<std::int32_t> in = {raw ? PC_INIT_1D : PC_INIT,    s.small(), s.byte() % 10 - 4, n, s.real(),
                                    s.byte() > 240 ? s.real() : dc};
    const int held = std::clamp(n, 0, 8192);
    for (int k = 0; k < 2 * held; k++)
        in.push_back(std::bit_cast<std::int32_t>(std::sin(0.37F * static_cast<float>(k * (1 + pick % 7)))));
    for (int damage = s.byte() % 4; damage > 0; damage--) {
        const auto at = 6 + static_cast<std::size_t>(s.byte()) * 3;
        if (at < in.size()) in[at] = s.word();
    }
    send(in);
}

// As an image gives a cut back: some of the words are not those that were kept.
void come_back(source& s) {
    send({PC_EXIT});
    cutj.jf = 1;
    cutj.ir.resize(static_cast<std::size_t>(std::clamp(cutj.np, 1, CUT_JOURNAL_WORDS)));
    for (int damage = s.byte() % 5; damage > 0; damage--) {
        const std::size_t n = cutj.ir.size(), from_end = static_cast<std::size_t>(s.byte());
        cutj.ir[s.byte() % 2 ? std::min(from_end % 16, n - 1) : n - 1 - std::min(from_end, n - 1)] =
            s.byte() % 2 ? s.small() : s.word();
    }
    if (s.byte() > 250) cutj.np = s.word();
    if (s.byte() > 250) cutj.ns = s.word();
    if (s.byte() > 250) cutj.ir.resize(static_cast<std::size_t>(s.byte()));
    initial(s, false);
}

void any_action(source& s) {
    const int action = s.byte() % 34 - 1;
    if (action == PC_INIT || action == PC_INIT_1D) return initial(s, action == PC_INIT_1D);
    std::vector<std::int32_t> in = {action};
    switch (action) {
    case PC_WEIGHT:
    case PC_EDIT:
    case PC_DIFFERENTIATE: in.insert(in.end(), {s.small(), s.small()}); break;
    case PC_PEAKS:
    case PC_SUB_SLOPE:
    case PC_SLOPE:
    case PC_BACKUP:
    case PC_DEWEIGHT: in.push_back(s.small()); break;
    case PC_SPLINE: in.insert(in.end(), {s.byte() % 4 - 1, s.small(), s.small()}); break;
    default: break;
    }
    for (int n = s.byte() % 12; n > 0; n--) in.push_back(s.real());
    if (action == PC_PERPENDICULAR || action == PC_SHIFT) in.push_back(s.small());
    send(in);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    app_hooks.popmsg = [](const std::string&) {};
    if (size > 600) return 0;
    source s{data, data + size};
    img = {};
    img.nt = s.byte();
    img.ksx = img.ksy = 1;
    img.dxc = 0.25F;
    kss = s.byte() % 2 ? 1 : -1;
    cutj = {};
    send({PC_REENTRY});
    initial(s, s.byte() > 200);
    while (s.at < s.end) {
        if (s.byte() > 245)
            come_back(s);
        else
            any_action(s);
    }
    return 0;
}

// Requests that move among the stored actions, keep a cut's journal with them, take them out or put them
// back.
#include "image/proimag.h"
#include "proimag_int.h"

#include <algorithm>

namespace norva::image {

failure do_go(processor& p, words_in in, words_out out) {
    if (in.size() < 2) return SHORT_RECORD;
    return replay(p, std::clamp(in[1], 0, p.ns), out);
}

failure do_step(processor& p, words_in in, words_out out) {
    if (in.size() < 2) return SHORT_RECORD;
    const std::int64_t target = static_cast<std::int64_t>(p.is) + in[1];
    if (target < 0) return "***Error 116...Cannot backup any further";
    if (target > p.ns) return "***Error 116...Cannot advance any further";
    return replay(p, static_cast<int>(target), out);
}

// A cut that was not changed keeps what is stored for it, and with it the steps ahead.
failure do_store_cut(processor& p, words_in, words_out out) {
    constexpr failure text = "***Error 118...proimag journal";
    if (p.last != PI_CUT || out.size() < 2) return text;
    const auto stored = static_cast<std::size_t>(p.actions[p.cut_at]);
    const bool keep = cutj.jf <= 0 && (stored > 0 || p.ns > p.is);
    if (!keep) {
        const auto np = static_cast<std::size_t>(std::max(cutj.np, 0));
        const std::size_t begin = p.cut_at + 1, nn = np > 0 ? np + 2 : 0;
        if (np > cutj.ir.size() || static_cast<std::size_t>(p.first_words) + begin + nn > PI_JOURNAL_WORDS)
            return text;
        p.actions.resize(begin);
        p.actions[p.cut_at] = static_cast<std::int32_t>(nn);
        if (np > 0) {
            p.actions.push_back(cutj.ns);
            p.actions.push_back(cutj.np);
            p.actions.insert(p.actions.end(), cutj.ir.begin(),
                             cutj.ir.begin() + static_cast<std::ptrdiff_t>(np));
        }
        p.np = p.actions.size();
        p.ns = p.is;
    }
    out[0] = p.is;
    out[1] = PI_STORE_CUT;
    return nullptr;
}

// The actions up to the present step leave, with the end as the last of them.
failure do_export(processor& p, words_in, words_out out) {
    const std::size_t words = p.np + 1;
    if (out.size() < 4 + words) return SHORT_RESULT;
    p.is++;
    p.ns = p.is;
    const std::int32_t header[] = {p.is, PI_EXPORT, static_cast<std::int32_t>(words) + 1, p.ns};
    auto to = std::ranges::copy(header, out.begin()).out;
    to = std::copy_n(p.actions.begin(), p.np, to);
    *to = PI_EXPORT;
    p.ready = false;
    return nullptr;
}

failure result_left(processor& p, words_out out) {
    if (out.size() < 4) return SHORT_RESULT;
    const std::int32_t record[] = {p.is, PI_EXPORT, 0, p.ns};
    std::ranges::copy(record, out.begin());
    p.ready = false;
    return nullptr;
}

// Stored actions come from files: they are taken only if they are whole, known, as many as they say, and the
// end is the last.
failure do_restore(processor& p, words_in in, words_out out) {
    constexpr failure text = "***Error 120...proimag journal error";
    if (in.size() < 2 || in[1] <= 0) return replay(p, p.is, out);
    const auto words = static_cast<std::size_t>(in[1]) - 1;
    if (in.size() < 3 || in.size() - 3 < words) return text;
    if (static_cast<std::size_t>(p.first_words) + words > PI_JOURNAL_WORDS) return text;
    const words_in actions = in.subspan(3, words);
    int steps = 0;
    for (std::size_t place = 0; place < words; steps++) {
        const std::size_t length = stored_length(actions, place);
        if (length == 0 || (actions[place] == PI_EXPORT && place + 1 != words)) return text;
        place += length;
    }
    if (in[2] < 0 || in[2] > steps) return text;
    to_first(p);
    p.actions.assign(actions.begin(), actions.end());
    p.ns = in[2];
    return replay(p, 0, out);
}

failure do_end(processor& p, words_in, words_out out) {
    p.ready = false;
    if (out.size() < 2) return SHORT_RESULT;
    out[0] = 0;
    out[1] = PI_END;
    return nullptr;
}

} // namespace norva::image

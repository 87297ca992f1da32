// The image's stored actions reduced to their kinds.
#include "journal/tag_ary.h"

#include "jrnl_int.h"
#include "state/calls.h"
#include "state/user.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <fstream>

namespace norva {

static constexpr int IMAGE_DISMISS = 19, IMAGE_CUT = 8, CUT_DISMISS = 26;
static constexpr int NO_MODE = -1;

namespace {

// The array as far as it goes; a word beyond its end makes the sum it enters run beyond the end as well.
struct action_words {
    std::span<const std::int32_t> ja;
    std::int64_t end;

    std::int64_t at(std::int64_t i) const { return i < end ? ja[static_cast<std::size_t>(i)] : end; }
};

} // namespace

// Words of a cut's own actions, with two counts before them; 0 for a cut that was never worked on.
static std::int64_t stored_cut_words(const action_words& words, std::int64_t j0) {
    return words.at(j0 + 6);
}

// Words of the image action at j0 (of a cut: those before the cut's own actions), or NO_MODE.
static std::int64_t image_advance(const action_words& words, std::int64_t j0) {
    switch (words.at(j0)) {
    case 1: return 2;
    case 3:
    case 4: return 5;
    case 5:
    case 6: return 3;
    case 7:
    case 11:
    case IMAGE_DISMISS: return 1;
    case IMAGE_CUT: return stored_cut_words(words, j0) == 0 ? 7 : 9;
    case 9: return 6;
    default: return NO_MODE;
    }
}

static std::int64_t cut_advance(const action_words& words, std::int64_t j0) {
    switch (words.at(j0)) {
    case 0: return 6 + 2 * words.at(j0 + 3);
    case 1:
    case 2: return 3 + words.at(j0 + 2);
    case 3:
    case 18: return 6;
    case 4:
    case 9:
    case CUT_DISMISS: return 1;
    case 5:
    case 8:
    case 15:
    case 16: return 4;
    case 6:
    case 7:
    case 20:
    case 22: return 3;
    case 10:
    case 11:
    case 19: return 2;
    case 14: return 2 + words.at(j0 + 1);
    case 17: return 6 + words.at(j0 + 2) + words.at(j0 + 3);
    case 21: return 5;
    default: return NO_MODE;
    }
}

namespace {

struct action_walker {
    action_words words;
    tag_walk walk;
    std::int64_t j0 = 2;

    bool fault(int err) {
        walk.err = err;
        walk.j0 = static_cast<int>(j0);
        if (j0 < words.end) walk.bad_mode = static_cast<int>(words.at(j0));
        return false;
    }
    // Notes the action at j0 and goes behind it.
    bool pass(std::int64_t length, int offset, int err) {
        if (length == NO_MODE) return fault(err);
        if (length < 1 || length > words.end - j0) return fault(3);
        walk.tags.push_back(static_cast<std::int32_t>(words.at(j0)) + offset);
        j0 += length;
        return true;
    }
    bool cut() {
        std::int64_t mode = NO_MODE;
        while (mode != CUT_DISMISS) {
            if (j0 >= words.end) return fault(3);
            mode = words.at(j0);
            if (!pass(cut_advance(words, j0), 200, 1)) return false;
        }
        return true;
    }
    void image(std::int64_t n) {
        std::int64_t mode = NO_MODE;
        for (walk.j = 0; walk.j < n; walk.j++) {
            if (j0 >= words.end) return void(fault(3));
            mode = words.at(j0);
            const bool worked_on = mode == IMAGE_CUT && stored_cut_words(words, j0) != 0;
            if (!pass(image_advance(words, j0), 100, 2)) return;
            if (worked_on && !cut()) return;
        }
        if (mode != IMAGE_DISMISS) fault(3);
    }
};

} // namespace

tag_walk walk_actions(std::span<const std::int32_t> ja) {
    const std::int64_t length = ja.empty() ? 0 : std::min<std::int64_t>(ja[0], std::ssize(ja));
    action_walker walker{{ja, length}, {}};
    walker.image(length > 1 ? ja[1] : 0);
    return walker.walk;
}

// For whoever looks for the fault: the array as it was, with the place marked.
static void dump_actions(std::span<const std::int32_t> ja, const tag_walk& walk) {
    std::ofstream file(first_free_version("gta_dbg.txt"));
    file << strprintf("journal file=%s\nerr=%d\nbad mode=%d\n\n", user.jfile.c_str(), walk.err, walk.bad_mode)
         << strprintf("k=%d\nj=%d\nj0=%d\n", static_cast<int>(walk.tags.size()), walk.j, walk.j0);
    for (std::size_t i = 0; i < ja.size(); i++) {
        file << strprintf("\n%d", ja[i]);
        if (walk.j0 == static_cast<int>(i)) file << strprintf("\t-- BAD MODE -- ja[j0]=%d\n", ja[i]);
    }
}

void get_tag_ary(std::span<const std::int32_t> ja, int& ns, std::vector<std::int32_t>& ta) {
    tag_walk walk = walk_actions(ja);
    if (walk.err != 0) {
        dump_actions(ja, walk);
        popmsg(walk.err == 3
                   ? "ERROR(3) in get_tag_ary() -- bad proimag tag array!"
                   : strprintf("ERROR(%d) in get_tag_ary() -- bad mode=%d!", walk.err, walk.bad_mode));
        walk.tags.clear();
    }
    ta = std::move(walk.tags);
    ns = static_cast<int>(ta.size());
}

} // namespace norva

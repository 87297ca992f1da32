#pragma once
// The image's stored actions (jary) reduced to their kinds, for the journal's listing: an image action of
// mode m becomes m + 100, an action in a cut of mode c becomes c + 200.

#include <cstdint>
#include <span>
#include <vector>

namespace norva {

// The walk. err 0: good; 1: unknown mode inside a cut; 2: unknown mode of the image; 3: the actions do not
// end with the dismissal (mode 19), or run beyond the array.
struct tag_walk {
    std::vector<std::int32_t> tags;
    int err = 0;
    int bad_mode = 0;
    int j = 0;  // image actions done
    int j0 = 0; // position of the action at fault
};
tag_walk walk_actions(std::span<const std::int32_t> ja);

// The walk's tags in ta, their number in ns. On a fault the whole array goes to the text file "gta_dbg.txt"
// (its first free version), a message is shown, and ns is 0.
void get_tag_ary(std::span<const std::int32_t> ja, int& ns, std::vector<std::int32_t>& ta);

} // namespace norva

// What is kept beside the image processor's stored actions, and its form in jary.
#include "image_steps.h"

#include <algorithm>
#include <bit>
#include <cmath>

namespace norva {

constexpr std::int32_t MARK = 0x47414d49; // "IMAG": no action has this number
constexpr std::size_t FIXED_WORDS = 6 + 1 + 8 + 1 + 2;

using words_in = std::span<const std::int32_t>;

static std::int32_t bits(float v) {
    return std::bit_cast<std::int32_t>(v);
}

static float real(std::int32_t w) {
    return std::bit_cast<float>(w);
}

float image_steps::clip_at(int step) const {
    float level = 1;
    for (const clip_level& c : clips)
        if (c.step <= step) level = c.level;
    return level;
}

void image_steps::forget_from(int step) {
    std::erase_if(clips, [step](const clip_level& c) { return c.step >= step; });
    std::erase_if(centred, [step](int s) { return s >= step; });
}

jbuf<std::int32_t> with_image_steps(const jbuf<std::int32_t>& plain, const image_steps& s) {
    const auto k = static_cast<std::size_t>(plain[0]);
    const plr_kws& g = s.geometry;
    std::vector<std::int32_t> words(plain.begin(), plain.begin() + plain[0] - 1);
    words.insert(words.end(), {s.ifx, s.ify, s.npmx, s.kscl, bits(s.apmn), bits(s.diam), s.polar, g.dtyp,
                               bits(g.xex), bits(g.yex), bits(g.rc), bits(g.da), bits(g.du), bits(g.sa),
                               bits(g.de), static_cast<std::int32_t>(s.clips.size())});
    for (const clip_level& c : s.clips) words.insert(words.end(), {c.step, bits(c.level)});
    words.insert(words.end(),
                 {static_cast<std::int32_t>(FIXED_WORDS + 2 * s.clips.size()), MARK, plain[k - 1]});
    words[0] = static_cast<std::int32_t>(words.size());
    jbuf<std::int32_t> jary;
    jary.assign(words);
    return jary;
}

static bool positive(float v) {
    return std::isfinite(v) && v > 0;
}

// The words of the extension, or none.
static words_in extension_of(words_in jary) {
    if (jary.size() < FIXED_WORDS + 3 || jary[jary.size() - 2] != MARK) return {};
    const std::int64_t n = jary[jary.size() - 3];
    if (n < static_cast<std::int64_t>(FIXED_WORDS) || n > std::ssize(jary) - 3) return {};
    const words_in words =
        jary.subspan(jary.size() - 1 - static_cast<std::size_t>(n), static_cast<std::size_t>(n));
    const std::int64_t clips = words[FIXED_WORDS - 3];
    return clips >= 0 && static_cast<std::int64_t>(FIXED_WORDS) + 2 * clips == n ? words : words_in{};
}

bool take_image_steps(words_in jary, std::vector<std::int32_t>& plain, image_steps& steps) {
    if (jary.empty() || jary[0] < 3 || jary[0] > std::ssize(jary)) return false;
    jary = jary.first(static_cast<std::size_t>(jary[0]));
    const words_in words = extension_of(jary);
    if (words.empty()) return false;
    image_steps read;
    read.ifx = words[0];
    read.ify = words[1];
    read.npmx = words[2];
    read.kscl = words[3];
    read.apmn = real(words[4]);
    read.diam = real(words[5]);
    read.polar = words[6] == 1;
    read.geometry = {.eflag = 1,
                     .dtyp = words[7],
                     .xex = real(words[8]),
                     .yex = real(words[9]),
                     .rc = real(words[10]),
                     .da = real(words[11]),
                     .du = real(words[12]),
                     .sa = real(words[13]),
                     .de = real(words[14])};
    for (std::size_t i = FIXED_WORDS - 2; i + 2 < words.size(); i += 2)
        read.clips.push_back({words[i], real(words[i + 1])});
    const bool sound = read.ifx >= 1 && read.ify >= 1 && read.npmx >= 0 && read.kscl >= 1 && read.kscl <= 3 &&
                       std::isfinite(read.apmn) && std::isfinite(read.diam) && read.diam >= 0 &&
                       std::ranges::all_of(read.clips, [](const clip_level& c) {
                           return c.step >= 1 && positive(c.level) && c.level <= 1;
                       });
    if (!sound) return false;
    steps = std::move(read);
    plain.assign(jary.begin(), jary.end() - 1 - std::ssize(words));
    plain.push_back(jary.back());
    plain[0] = static_cast<std::int32_t>(plain.size());
    return true;
}

} // namespace norva

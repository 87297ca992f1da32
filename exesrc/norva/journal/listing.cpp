// The journal as text.
#include "journal/listing.h"

#include "state/calls.h"
#include "zuvsys/strprintf.h"

#include <algorithm>
#include <array>

namespace norva {

static constexpr std::array TAG_TEXTS = {
    "Initialization",                               // 0
    "Dismiss (to main window)",                     // 1
    "Decimate",                                     // 2
    "Range Profile (window)",                       // 3
    "Remove Linear Drift (Mocomp)",                 // 4
    "Center Profiles (Mocomp)",                     // 5
    "BLANK",                                        // 6
    "Remove Line (Mocomp)",                         // 7
    "Remove Doppler Ambiguities (Mocomp)",          // 8
    "Downsize (to main window)",                    // 9
    "Range Peaks (window)",                         // 10
    "Edit",                                         // 11
    "Unwrap Range Ambiguity",                       // 12
    "Fit Spline",                                   // 13
    "Motion Compensate",                            // 14
    "Dismiss (to Range Profile window)",            // 15
    "Remove Doppler Ambiguities (Mocomp)",          // 16
    "BLANK",                                        // 17
    "Moving Window Image (window)",                 // 18
    "Initialize MWI peaks",                         // 19
    "Add/Subtract Doppler Ambiguity",               // 20
    "Unwrap Range Ambiguity",                       // 21
    "Edit",                                         // 22
    "Motion Compensate (to main window)",           // 23
    "Fit Spline",                                   // 24
    "",                                             // 25
    "BLANK",                                        // 26
    "Dismiss Image Window (to main window)",        // 27
    "Image Processing (window)",                    // 28
    "Doppler Profile (window)",                     // 29
    "Initialize Doppler Profiles",                  // 30
    "Remove Linear Drift (Mocomp)",                 // 31
    "Remove Constant Doppler (Mocomp)",             // 32
    "BLANK",                                        // 33
    "BLANK",                                        // 34
    "1-D Signal Analysis (window)",                 // 35
    "Dismiss 1-D Analysis Window (to main window)", // 36
    "Doppler Peaks (window)",                       // 37
    "Edit",                                         // 38
    "Unwrap Doppler Ambiguity",                     // 39
    "Fit Spline",                                   // 40
    "Motion Compensate",                            // 41
    "Dismiss (to Doppler Profile window)",          // 42
    "BLANK",                                        // 43
    "BLANK",                                        // 44
    "Mocomp with Track Data (window)",              // 45
    "Load Track File",                              // 46
    "Fit Spline",                                   // 47
    "Motion Compensate (to main window)",           // 48
    "BLANK",                                        // 49
};
static_assert(TAG_TEXTS.size() == 50);

// Steps of the image, entries 100 on.
static constexpr std::array IMAGE_TEXTS = {
    "Initialization",                   // 100
    "Flop Image",                       // 101
    "Polar Format Initialization",      // 102
    "Change Peak Scaling",              // 103
    "Edit",                             // 104
    "Interpolate",                      // 105
    "Peak Parameters",                  // 106
    "Write Data File After Image Edit", // 107
    "Compute Cut (window)",             // 108
    "Center",                           // 109
    "Polar Format Initialization",      // 110
    "Write Data File After Image Edit", // 111
};
static_assert(IMAGE_TEXTS.size() == 12);

// Steps in a cut, entries 200 on.
static constexpr std::array CUT_TEXTS = {
    "Initialization",                       // 200
    "Change Weight",                        // 201
    "Data Edit",                            // 202
    "Subtract Phase Slope",                 // 203
    "Subtract Phase Spline",                // 204
    "Remove Phase Jump",                    // 205
    "Set Phase to Zero",                    // 206
    "Set Amplitude to Unity",               // 207
    "Differentiate",                        // 208
    "",                                     // 209 has no line: "Restore Differentiate"
    "Deweight for Display",                 // 210
    "Show Previous State",                  // 211
    "BLANK",                                // 212
    "BLANK",                                // 213
    "Peak Params - n Crosshairs",           // 214
    "Peak Params - Crosshair Pair",         // 215
    "Measure Phase Slope",                  // 216
    "Measure Phase Spline",                 // 217
    "TSA Measurement",                      // 218
    "Parallel Cut",                         // 219
    "Perpendicular Cut",                    // 220
    "Shift Point to Origin in Image",       // 221
    "Motion Compensate",                    // 222
    "",                                     // 223
    "BLANK",                                // 224
    "BLANK",                                // 225
    "Dismiss Cut Window (to image window)", // 226
};
static_assert(CUT_TEXTS.size() == 27);

static constexpr int IMAGE_END = 119, CENTER = 109;
static constexpr int CUT_RESTORE = 209, CUT_SHIFT = 221, CUT_MOCOMP = 222, CUT_END = 226;

static const char* text_of(std::span<const char* const> texts, int i) {
    return i >= 0 && i < std::ssize(texts) ? texts[i] : "";
}

std::string step_text(int tag) {
    return text_of(TAG_TEXTS, tag);
}

namespace {

struct list_writer {
    journal_listing listing;
    int lines = 0;
    bool full = false;

    void line(const std::string& text) {
        full = full || lines == JRNL_MAX_LINES;
        if (full) return;
        listing.text += text;
        lines++;
    }

    // The steps of one image, from the pointer mc that held when it was opened; mc_after holds from the step
    // on that compensated the motion.
    void substeps(std::span<const std::int32_t> entries, int mc, int mc_after) {
        for (std::size_t i = 0; i < entries.size() && !full; i++) {
            const int entry = entries[i];
            if (entry == IMAGE_END) {
                if (i + 1 != entries.size()) listing.messages.push_back("ERROR(3) in get_jrnl_info()/jrnl!");
                return;
            }
            if (entry < 100 || entry > CUT_END) {
                listing.messages.push_back(entry < 100 ? "ERROR(1) in get_jrnl_info()/jrnl"
                                                       : "ERROR(2) in get_jrnl_info()/jrnl");
                return;
            }
            if (entry == CUT_RESTORE) continue;
            if (entry == CENTER || entry == CUT_SHIFT || entry == CUT_MOCOMP) mc = mc_after;
            const bool in_cut = entry >= 200 && entry != CUT_END;
            const char* text =
                entry < 200 ? text_of(IMAGE_TEXTS, entry - 100) : text_of(CUT_TEXTS, entry - 200);
            line(strprintf(in_cut ? "%4s%8d%16s%-60s\n" : "%4s%8d%12s%-60s\n", "", mc, "", text));
        }
    }
};

} // namespace

journal_listing list_journal(std::span<const std::int32_t> ary) {
    list_writer out;
    out.listing.text = "Journal File Operations\n\n" +
                       strprintf("%6s%6s%8s%s\n", "Step #", "mc", "", "Description") + std::string(60, '-') +
                       "\n";
    if (ary.empty()) return out.listing;
    const int nc = ary[0];
    ary = ary.subspan(1);
    int mc_before = 0;
    for (int i = 0; i <= nc && ary.size() >= 2 && !out.full; i++) {
        const int tag = ary[0], mc = ary[1];
        if (tag == 89) break;
        ary = ary.subspan(2);
        if (tag == 27 && !ary.empty()) {
            const auto told = static_cast<std::size_t>(std::max(ary[0], 0));
            ary = ary.subspan(1);
            const std::size_t n = std::min(told, ary.size());
            out.substeps(ary.first(n), mc_before, mc);
            ary = ary.subspan(n);
        }
        out.line(strprintf("%4d%8d%8s%-60s\n", i, mc, "", text_of(TAG_TEXTS, tag)));
        mc_before = mc;
    }
    if (out.full)
        out.listing.messages.push_back(
            strprintf("Can only display %d lines of the journal!", JRNL_MAX_LINES));
    return out.listing;
}

void get_jrnl_info(std::string& epage, std::span<const std::int32_t> ary) {
    journal_listing listing = list_journal(ary);
    for (const std::string& message : listing.messages) popmsg(message);
    epage = std::move(listing.text);
}

} // namespace norva

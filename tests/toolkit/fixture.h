#pragma once
// A fresh recording port and a fresh tree for each test, and a note of what was called back.

#include "port_record/port_record.h"
#include "toolkit/toolkit.h"
#include "toolkit/wi_obj.h"

#include <gtest/gtest.h>

namespace norva::test {

struct called {
    const wi_obj* wo;
    int tag;
    bool operator==(const called&) const = default;
};

inline std::vector<called> calls;
inline void note_cb(wi_obj* wo, int tag) {
    calls.push_back({wo, tag});
}

class toolkit_test : public testing::Test {
protected:
    record_port rec;
    toolkit_test() {
        wi_reset_for_tests();
        set_port(&rec);
        calls.clear();
    }
    ~toolkit_test() override { set_port(nullptr); }

    // A 600 by 600 pixel window that holds a form of so many units.
    wi_obj* window(double xsize = 60, double ysize = 60) {
        wi_obj* fm = wi_mk_form(nullptr, xsize, ysize);
        rec.move(fm->shell->handle, {0, 0, 600, 600});
        return fm;
    }
    port_win entry(const wi_obj* field) const { return field->wins.at(1); } // of a number or string field
    port_rect rect(port_win win) const { return rec.window(win).rect; }
};

// The text with which `action` ends the program; empty when it does not.
template <class F> std::string fatal_text(F action) {
    try {
        action();
    } catch (const record_fatal& f) {
        return f.what();
    }
    return {};
}

} // namespace norva::test

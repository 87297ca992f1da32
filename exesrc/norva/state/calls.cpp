#include "state/calls.h"

#include <cstdio>

namespace norva {

static void print_message(const std::string& text) {
    std::fprintf(stderr, "%s\n", text.c_str());
}

app_calls app_hooks = {
    .popmsg = print_message,
    .rpt_progress = [](int, int) {},
    .computing = [](bool) {},
};

void popmsg(const std::string& text) {
    app_hooks.popmsg(text);
}

void rpt_progress(int indx, int ntot) {
    app_hooks.rpt_progress(indx, ntot);
}

} // namespace norva

#pragma once
// An empty store, a fresh run state and a folder of its own for each test; messages are collected.

#include "journal/journal.h"
#include "journal/record.h"
#include "journal/store.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "support/temp_dir.h"
#include "zuvsys/safefile.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace norva::test {

using words = std::vector<std::int32_t>;

inline std::vector<std::string> messages; // shown since the test began

class journal_test : public testing::Test {
protected:
    journal_test() {
        ask({95});
        reset_run_state();
        jary.clear();
        messages.clear();
        safefile_system.fsync = [](int) { return 0; }; // nobody pulls the plug here
        app_hooks.popmsg = [](const std::string& text) { messages.push_back(text); };
    }
    ~journal_test() override {
        app_hooks = calls_before;
        safefile_system = system_before;
        journal_hooks = hooks_before;
        journal_store_hooks = store_hooks_before;
    }

    static words ask(const words& in) {
        words out;
        journal(in, out);
        return out;
    }
    static std::string text(const words& in) { return journal_text(ask(in)); }
    static words begin(const std::string& name, const std::string& head = "raw.pfx") {
        words in(69);
        in[0] = 90;
        put_text(std::span(in).subspan(1, 50), head);
        put_text(std::span(in).subspan(51, 18), name);
        return ask(in);
    }
    static words load(const std::string& name) {
        words in(2 + (name.size() + 3) / 4);
        in[0] = 94;
        in[1] = static_cast<std::int32_t>(name.size());
        put_text(std::span(in).subspan(2), name);
        return ask(in);
    }
    // Words as a file holds them.
    static std::string le(std::initializer_list<int> values) {
        std::string bytes;
        for (int v : values)
            for (int b = 0; b < 4; b++) bytes += static_cast<char>(static_cast<unsigned>(v) >> (8 * b));
        return bytes;
    }
    // A record of n arguments that count up from its tag.
    static words record(int tag, int n, int pointer = 0) {
        words r = {tag, pointer, n};
        for (int i = 0; i < n; i++) r.push_back(tag + i);
        return r;
    }
    // A step's reply: its index, then the record.
    static words reply(int index, const words& r) {
        words out = {index};
        out.insert(out.end(), r.begin(), r.end());
        return out;
    }

    temp_dir dir;
    current_dir cwd{dir.path()};
    app_calls calls_before = app_hooks;
    safefile_calls system_before = safefile_system;
    journal_calls hooks_before = journal_hooks;
    journal_store_calls store_hooks_before = journal_store_hooks;
};

} // namespace norva::test

// Start-up of the application.
#include "app/start.h"

#include "app/env_file.h"
#include "app/headless.h"
#include "app/main_window.h"
#include "app/names.h"
#include "app/user_defaults.h"
#include "journal/crash_file.h"
#include "state/calls.h"
#include "state/defaults.h"
#include "state/run.h"
#include "state/user.h"
#include "state/window_register.h"
#include "toolkit/wi.h"
#include "zuvsys/logicals.h"
#include "zuvsys/program.h"

#include <cstring>
#include <filesystem>
#include <utility>
#include <vector>

namespace norva {

namespace fs = std::filesystem;

static const char* const help_text =
    "NORVA - Program for Complex Image Analysis\n"
    "\n"
    "norva [FILE]                      starts the workstation, with a raw file or a journal (.jou) opened\n"
    "norva --replay FILE [--out DIR]   replays a journal without a display; writes a picture (PNG) and a\n"
    "                                  hardcopy (PDF) of each step that shows a window, and summary.txt,\n"
    "                                  into DIR (\"out\" when not given)\n"
    "norva --help | --version\n"
    "\n"
    "Settings are read from norva.env in the current folder, then in the user's configuration folder, then\n"
    "beside the program.\n";

static start_options options;

start_options parse_options(int argc, const char* const* argv) {
    start_options found;
    found.out = "out";
    bool out_given = false;
    for (int i = 1; i < argc; i++) {
        const std::string word = argv[i];
        const auto value = [&](std::string& into) {
            if (i + 1 < argc)
                into = argv[++i];
            else
                found.fault = word + " needs a value";
        };
        if (word == "--help")
            found.answer = help_text;
        else if (word == "--version")
            found.answer = "norva " NORVA_VERSION "\n";
        else if (word == "--replay")
            value(found.replay);
        else if (word == "--out")
            value(found.out), out_given = true;
        else if (word == "helpedit")
            continue;
        else if (word.starts_with("-") && word != "-")
            found.fault = "unknown option " + word;
        else if (found.open.empty())
            found.open = word;
        else
            found.fault = "more than one file: " + word;
    }
    if (out_given && found.replay.empty() && found.fault.empty()) found.fault = "--out goes with --replay";
    return found;
}

// The environment file that was installed with the program.
static std::string installed_env_file() {
    std::error_code ignored;
    const fs::path here = zuvsys_program_folder();
    for (const fs::path& place : {here / "norva.env", here.parent_path() / "share/norva/norva.env"})
        if (fs::exists(place, ignored)) return place.string();
    return {};
}

// What "QELM" would name, were it set: the folder that holds the sample data.
static std::string installed_tree() {
    std::error_code ignored;
    const fs::path shared = fs::path(zuvsys_program_folder()).parent_path() / "share/norva";
    return fs::exists(shared, ignored) ? shared.string() : zuvsys_program_folder();
}

static void open_at_start(const std::string& name) {
    if (rename_file(name).find(".jou") != std::string::npos) {
        select_journal_file(name);
        filewin_cb(main_window().jfil, 2);
    } else {
        select_raw_file(name);
        filewin_cb(main_window().rdfil, 1);
    }
}

// Messages that came up before the window that shows them.
static std::vector<std::string> early_messages;

void norva_start_with(const start_options& with) {
    options = with;
}

void norva_main(int argc, char** argv) {
    reset_run_state();
    if (!norva_env(installed_env_file()))
        wi_exit(
            "Cannot find the file norva.env in the executable directory nor in c:\\windows directory.  Try "
            "copying the file from norva\\doc (where norva was installed) to the executable directory and/or "
            "to the c:\\windows directory.  Otherwise NORVA must be reinstalled.");
    const char* qelm = get_logical("QELM", nullptr);
    homedir = qelm ? qelm : "";
    wi_hooks.home_dir = installed_tree();
    wi_main_init(argc, argv);
    norva_regwin_init();
    if (options.replay.empty()) // a replay without a display has them on standard error
        app_hooks.popmsg = [](const std::string& text) { early_messages.push_back(text); };
    dflt_autoload(def);
    filewin_init();
    if (options.replay.empty())
        for (const std::string& text : std::exchange(early_messages, {})) popmsg(text);
    user.count = 0;
    user.dp_ni = static_cast<int>(def.dp_ni);
    user.dp_ip = static_cast<int>(def.dp_if);
    user.dp_lag = static_cast<int>(def.dp_lag);
    std::error_code ignored;
    if (options.replay.empty() && fs::exists(CRASH_FILE, ignored))
        popmsg("The analysis that was under way in this folder was not closed.  To go on from where it was, "
               "open "
               "its journal before you start another one.");
    if (!options.replay.empty())
        replay_headless(options.replay, options.out);
    else if (!options.open.empty())
        the_port().later([] { open_at_start(options.open); });
}

} // namespace norva

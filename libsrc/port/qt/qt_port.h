#pragma once
// The Qt port's own class and its record of windows. One file per family implements it:
//
//   start.cpp    QApplication, look, measures      window.cpp     create, move, show, enable, text
//   loop.cpp     run, pump, busy, notices          draw_area.cpp  pictures and drawing
//   events.cpp   keys, mouse and close of controls fields.cpp     fields and text pages
//   dialogs.cpp  questions, messages, files        buttons.cpp    toggles, swatches, up-down buttons
//   page.cpp     printing, PDF, window pictures    lists.cpp      lists and popup menus
//
// Two rules hold everything together.
//   1. A handler is called only through tell(), and never while another one runs: what happens meanwhile is
//      dropped (input) or noted and told later (sizes, paint notices, close requests, answers).
//   2. A widget is never deleted inside an event; destroy() forgets the record, hides, and deletes later.

#include "port/port.h"
#include "port_qt/port_qt.h"

#include "canvas.h"

#include <QObject>
#include <QString>

#include <deque>
#include <map>
#include <memory>
#include <unordered_map>

class QApplication;
class QComboBox;
class QDialog;
class QEvent;
class QKeyEvent;
class QLineEdit;
class QMouseEvent;
class QWidget;

namespace norva {

class draw_area;
struct printed_page;

struct control {
    port_kind kind{};
    port_win top = 0; // the window it stands in; its own number for a top window
    QWidget* widget = nullptr;
    std::string text; // as given: a widget may show it shortened
    int style = 0;
    bool shown = false;
    bool above = false;     // a top window that stays above the one that is active when it is shown
    port_rect place;        // of a child, as given to move
    port_size told;         // of a top window: the last size given to on_size
    bool size_due = false;  // a top window's size changed by the user or the window manager
    bool close_due = false; // the user asked to close while a handler ran
};

class qt_port final : public port {
public:
    explicit qt_port(const qt_port_options& options);
    ~qt_port() override;

    void set_events(port_events* events) override { events_ = events; }
    int run() override;
    void quit(int code) override;
    void pump() override;
    void busy(bool on) override;
    void later(std::function<void()> task) override;

    port_size screen_size() override;
    port_size edge_size() override;
    int char_height() override;

    port_win create(port_kind kind, port_win parent, int style, const std::string& text) override;
    void destroy(port_win win) override;
    void move(port_win win, port_rect to) override;
    port_rect client_rect(port_win win) override;
    port_rect window_rect(port_win win) override;
    void show(port_win win, bool on) override;
    bool shown(port_win win) override;
    void raise(port_win win) override;
    void keep_above(port_win win) override;
    void focus(port_win win) override;
    void enable(port_win win, bool on) override;
    void read_only(port_win win, bool on) override;
    void set_text(port_win win, const std::string& text) override;
    std::string get_text(port_win win) override;
    void set_check(port_win win, bool on) override;
    bool get_check(port_win win) override;
    void list_set(port_win win, const std::vector<std::string>& entries) override;
    void list_select(port_win win, int index) override;
    int list_index(port_win win) override;
    void swatch_colour(port_win win, std::uint32_t rgb) override;
    void mouse_free(port_win win, bool on) override;
    void tooltip(port_win win, const std::string& text) override;

    void menu_popup(port_win win, const std::vector<port_menu_entry>& entries) override;

    void pen(port_win dc, std::uint32_t rgb, int style, int width) override;
    void rop(port_win dc, port_rop mode) override;
    void move_to(port_win dc, port_point to) override;
    void polyline_to(port_win dc, std::span<const port_point> points) override;
    void fill(port_win dc, port_rect area, std::uint32_t rgb) override;
    void erase(port_win dc, port_rect area) override;
    void image(port_win dc, port_rect area, std::span<const std::uint32_t> rgb, int w, int h) override;
    void request_paint(port_win win) override;

    void message(const std::string& title, const std::string& text, std::function<void()> done) override;
    void yes_no(const std::string& title, const std::string& text, std::function<void(bool)> done) override;
    void ask_file(const port_file_request& request, std::function<void(const std::string&)> done) override;
    void fatal(const std::string& title, const std::string& text) override;

    port_page_result page_begin(const port_page_job& job) override;
    port_page_caps page_caps() override;
    port_page_result page_end() override;

    bool picture(port_win win, const std::string& png_file) override;

    // --- For the widgets of this port
    // Runs call(handler) unless a handler runs already; true when it was called.
    template <class F> bool tell(F call) {
        if (inside_ > 0 || !events_) return false;
        inside inner(*this);
        call(*events_);
        return true;
    }
    void notice(); // something is due; deliver it from the loop
    void top_resized(port_win win);
    void top_closed(port_win win);
    QWidget* widget_of(port_win win);

private:
    // While one of these lives no handler is called.
    class inside {
    public:
        explicit inside(qt_port& p) : port_(p) { port_.inside_++; }
        ~inside() {
            if (--port_.inside_ == 0) port_.notice_if_due();
        }
        inside(const inside&) = delete;
        inside& operator=(const inside&) = delete;

    private:
        qt_port& port_;
    };

    // window.cpp
    control* find(port_win win);
    control* find(port_win win, port_kind kind);
    double ratio() const;
    void show_text(control& c);
    void fit_to_screen(port_win win);
    void tell_size(port_win win);

    // loop.cpp
    void notice_if_due();
    void deliver();
    void deliver_window(port_win win);

    // events.cpp
    friend class event_filter;
    bool filter(QWidget& receiver, QEvent& event); // true: the event goes no further
    bool key_press(port_win win, QWidget& receiver, QKeyEvent& key);
    bool field_key(port_win win, QKeyEvent& key);
    bool mouse_event(port_win win, QMouseEvent& mouse);
    port_win owner_of(const QWidget& receiver) const;

    // fields.cpp
    QWidget* make_field(QWidget* parent);
    QWidget* make_text_page(QWidget* parent);
    bool takes_text(const control& c) const;
    QString kept_characters(port_win win, const QString& typed);
    void paste(port_win win);
    static QLineEdit* line_of(const control& c);

    // buttons.cpp, lists.cpp
    QWidget* make_button(QWidget* parent, port_kind kind, port_win win);
    QWidget* make_combo(QWidget* parent, port_kind kind, port_win win);
    static QComboBox* combo_of(control* c);

    // draw_area.cpp, page.cpp
    canvas* target(port_win dc);
    draw_area* area_of(port_win win);

    // dialogs.cpp
    void ask_next();
    void open_dialog(QDialog* dialog, std::function<void(int)> answer);
    QWidget* dialog_parent();

    qt_port_options options_;
    port_events* events_ = nullptr;

    int argc_ = 1;
    char name_[6] = "norva";
    char* argv_[2] = {name_, nullptr};
    std::unique_ptr<QApplication> app_;
    std::unique_ptr<QObject> filter_;
    std::unique_ptr<QObject> context_; // receiver of queued calls; nothing arrives after its end

    std::map<port_win, control> controls_; // in the order of creation
    std::unordered_map<const QObject*, port_win> by_widget_;
    port_win last_win_ = 0;

    int inside_ = 0; // handlers, pump and modal dialogs now running
    int busy_ = 0;
    bool posted_ = false;
    bool tabbing_ = false; // on_tab is being told: focus() selects the field's text
    bool quit_asked_ = false;
    int quit_code_ = 0;
    std::deque<std::function<void()>> tasks_; // answers and menu choices to tell from the loop

    std::deque<std::function<void()>> questions_; // dialogs that wait for their turn
    bool asking_ = false;

    std::unique_ptr<printed_page> page_;
};

} // namespace norva

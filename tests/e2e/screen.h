#pragma once
// The whole program on real widgets, offscreen, driven by mouse and keys as the window system would send
// them.

#include "app/main_window.h"
#include "app/start.h"
#include "doppler_int.h"
#include "draw/image_picture.h"
#include "image/ximag.h"
#include "journal/journal.h"
#include "port_qt/port_qt.h"
#include "port_qt/testing.h"
#include "profiles/doppler_window.h"
#include "profiles/range_window.h"
#include "range_int.h"
#include "scene/scene_file.h"
#include "state/calls.h"
#include "state/run.h"
#include "state/user.h"
#include "support/temp_dir.h"
#include "toolkit/toolkit.h"
#include "vgph/vggph.h"
#include "ximag_int.h"
#include "zuvsys/safefile.h"

#include <QApplication>
#include <QImage>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPixmap>
#include <QPushButton>

#include <gtest/gtest.h>

#include <complex>
#include <cstdlib>
#include <memory>
#include <numbers>
#include <string>
#include <vector>

namespace norva::test {

class screen : public testing::Test {
protected:
    screen() : here_(dir.path()) {
        write_all("norva.env", "# test\n");
        safefile_system.fsync = [](int) { return 0; };
    }

    void start() {
        platform_.reset(); // a second start is a new run
        platform_ = make_qt_port({.unattended = true});
        set_port(platform_.get());
        wi_reset_for_tests();
        xrp_reset_for_tests();
        xdp_reset_for_tests();
        ximag_reset_for_tests();
        char name[] = "norva";
        char* argv[] = {name, nullptr};
        norva_start_with({});
        // The loop is entered by WinMain only to be left again; the tests turn it themselves.
        platform_->later([] { wi_quit(0); });
        WinMain(1, argv, norva_main);
        turn();
    }

    static void turn() {
        for (int i = 0; i < 20; i++) QApplication::processEvents();
    }

    static QPushButton* button(const std::string& text) {
        for (QWidget* top : QApplication::topLevelWidgets())
            for (QPushButton* found : top->findChildren<QPushButton*>())
                if (found->text().toStdString() == text && found->isVisible()) return found;
        return nullptr;
    }
    // False for a button that is not there or that is grey.
    static bool click(const std::string& text) {
        QPushButton* found = button(text);
        if (!found || !found->isEnabled()) return false;
        mouse(found, QEvent::MouseButtonPress, found->rect().center(), Qt::LeftButton);
        mouse(found, QEvent::MouseButtonRelease, found->rect().center(), Qt::LeftButton);
        turn();
        return true;
    }
    static void mouse(QWidget* on, QEvent::Type type, QPoint at, Qt::MouseButton which) {
        const bool down = type == QEvent::MouseButtonPress;
        QMouseEvent event(type, at, on->mapToGlobal(QPointF(at)),
                          type == QEvent::MouseMove ? Qt::NoButton : which, down ? which : Qt::NoButton,
                          Qt::NoModifier);
        QApplication::sendEvent(on, &event);
    }
    static void key(QWidget* on, int code, Qt::KeyboardModifiers with = Qt::NoModifier) {
        QKeyEvent press(QEvent::KeyPress, code, with, code == Qt::Key_Return ? QString("\r") : QString());
        QApplication::sendEvent(on, &press);
        turn();
    }
    // Types into field number `i` of a window and presses return.
    static void type(const std::string& window, int i, const std::string& text) {
        for (QWidget* top : QApplication::topLevelWidgets()) {
            if (top->windowTitle().toStdString() != window) continue;
            QLineEdit* field = top->findChildren<QLineEdit*>().at(i);
            field->setText(QString::fromStdString(text));
            key(field, Qt::Key_Return);
        }
    }
    QWidget* widget(port_win win) { return port_qt_widget(*platform_, win); }

    // The picture of the analysis window that is up, the Doppler window's before the range window's.
    static const _vgdisplay& display() { return imgwinon ? *xi.disp : dpwinon ? *dp.disp : *rp.disp; }
    static const _vgdataframe& frame() {
        return imgwinon ? xi_picture.xy_df : dpwinon ? dp.picture.dp_df : rp.picture.rp_df;
    }
    QWidget* plot() { return widget(display().handle); }
    QImage look() {
        turn();
        return plot()->grab().toImage();
    }
    // Where a place of the picture is: gates and seconds, in an image gates and gates.
    static QPoint at(double x, double y) {
        const port_point p = vg_to_pixel(display(), vg_x_loc(frame(), x), vg_y_loc(frame(), y));
        return {p.x, p.y};
    }
    void press(QPoint p, Qt::MouseButton which) {
        QWidget* pressed = plot(); // the press may close its window
        mouse(pressed, QEvent::MouseButtonPress, p, which);
        mouse(pressed, QEvent::MouseButtonRelease, p, which);
        turn();
    }
    void hover(QPoint p) {
        mouse(plot(), QEvent::MouseMove, p, Qt::NoButton);
        turn();
    }

    // Where the strongest return of a record stands, in gates: the largest of a direct sum on a fine grid.
    static double peak_gate(int record, double from, double to) {
        double best = from, most = -1;
        for (double gate = from; gate <= to; gate += 0.01) {
            std::complex<double> sum = 0;
            for (int k = 0; k < user.nf; k++) {
                const std::size_t i =
                    2 * (static_cast<std::size_t>(record) * static_cast<std::size_t>(user.nf) +
                         static_cast<std::size_t>(k));
                const double weight = 0.54 - 0.46 * std::cos(2 * std::numbers::pi * (k + 0.5) / user.nf);
                sum += weight * std::complex<double>(user.pfdata[i], user.pfdata[i + 1]) *
                       std::polar(1.0, user.ksy * 2 * std::numbers::pi * k * gate / user.nf);
            }
            if (std::abs(sum) > most) {
                most = std::abs(sum);
                best = gate;
            }
        }
        return best;
    }

    // The installed program replays a journal into the folder "out".
    static void replay(const std::string& journal) {
        const std::string command = NORVA_PROGRAM " --replay '" + journal + "' --out out >replay.txt 2>&1";
        ASSERT_EQ(std::system(command.c_str()), 0) << read_all("replay.txt");
    }

    temp_dir dir;

private:
    current_dir here_;
    std::unique_ptr<port> platform_;
};

} // namespace norva::test

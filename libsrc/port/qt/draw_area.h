#pragma once
// The widget of a draw area. The picture lives in an image; painting the widget only copies it.

#include "canvas.h"

#include <QImage>
#include <QWidget>

namespace norva {

class qt_port;

class draw_area final : public QWidget {
public:
    draw_area(QWidget* parent, qt_port& port, port_win win);
    ~draw_area() override { dc.end(); } // before the picture goes

    canvas dc;
    // Why a notice is due: it was asked for, or the size changed and may differ from the picture's.
    bool asked = true, resized = false;

    port_size picture_size() const { return {image_.width(), image_.height()}; }
    port_size widget_size() const;
    bool notice_due() const { return asked || resized; }
    // Makes the picture fit the widget. True when the program has to be told (and the notice counts as told).
    bool take_notice();
    void touch(); // the picture changed: copy it to the screen soon

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;

private:
    void press(QMouseEvent* event);
    void tell_mouse(port_mouse kind, QMouseEvent* event, int button);
    void release_stale(QMouseEvent* event);

    qt_port& port_;
    port_win win_;
    QImage image_;
    bool dirty_ = false; // the screen is behind the picture and update() was called
    unsigned held_ = 0;  // buttons pressed here, one bit each
    int current_ = 0;    // the one pressed last
};

} // namespace norva

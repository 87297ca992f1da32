#pragma once
// Push buttons, toggles, swatches and up-down buttons.

#include <QAbstractButton>
#include <QImage>
#include <QPushButton>

namespace norva {

// A button whose pressed state only the program changes.
class toggle_button final : public QPushButton {
public:
    explicit toggle_button(QWidget* parent);
    void set_pressed_in(bool on);

protected:
    void nextCheckState() override {} // a click reports and leaves the state
};

// A clickable area of one colour, or of a picture.
class swatch_button final : public QAbstractButton {
public:
    explicit swatch_button(QWidget* parent);
    void set_colour(const QColor& colour);
    void set_picture(const QImage& picture);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QColor colour_;
    QImage picture_;
};

} // namespace norva

// Pictures that have no size of their own.
#pragma once

#include <QIcon>
#include <QPixmap>
#include <QSvgRenderer>
#include <QWidget>
#include <string>

namespace korvane::qt {

// `svg` drawn into a square of so many pixels; null when it is no picture.
QPixmap DrawnPicture(const std::string& svg, int pixels);

// In all sizes in which desktops show the icons of programs.
QIcon IconOf(const std::string& svg);

// Shows a picture as large as there is room, in its own proportions and in the
// middle, drawn anew for each size and scale.
class PictureBox : public QWidget {
public:
    using QWidget::QWidget;
    // Empty for none; nothing is shown of what is no picture.
    void SetPicture(const std::string& svg);

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    QSvgRenderer picture_;
};

}  // namespace korvane::qt

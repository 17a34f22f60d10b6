#include "bindings/qt/picture.h"

#include <QByteArray>
#include <QPainter>

namespace korvane::qt {
namespace {

QByteArray Bytes(const std::string& text) {
    return {text.data(), static_cast<qsizetype>(text.size())};
}

}  // namespace

QPixmap DrawnPicture(const std::string& svg, int pixels) {
    QSvgRenderer picture(Bytes(svg));
    if (!picture.isValid()) return {};
    picture.setAspectRatioMode(Qt::KeepAspectRatio);
    QPixmap drawn(pixels, pixels);
    drawn.fill(Qt::transparent);
    QPainter painter(&drawn);
    painter.setRenderHint(QPainter::Antialiasing);
    picture.render(&painter);
    return drawn;
}

QIcon IconOf(const std::string& svg) {
    QIcon icon;
    for (const int pixels : {16, 22, 24, 32, 48, 64, 128, 256}) {
        const QPixmap drawn = DrawnPicture(svg, pixels);
        if (!drawn.isNull()) icon.addPixmap(drawn);
    }
    return icon;
}

void PictureBox::SetPicture(const std::string& svg) {
    picture_.load(Bytes(svg));
    picture_.setAspectRatioMode(Qt::KeepAspectRatio);
    update();
}

void PictureBox::paintEvent(QPaintEvent* /*event*/) {
    if (!picture_.isValid()) return;
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    picture_.render(&painter, rect());
}

}  // namespace korvane::qt

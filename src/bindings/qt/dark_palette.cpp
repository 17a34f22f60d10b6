#include "bindings/qt/dark_palette.h"

#include <QApplication>
#include <QPalette>

namespace korvane::qt {

void UseDarkPalette() {
    QPalette palette(QColor(0x4A, 0x4B, 0x50), QColor(0x3B, 0x3C, 0x40));
    const QColor text(0xE8, 0xE8, 0xE8);
    palette.setColor(QPalette::Base, QColor(0x1E, 0x1F, 0x22));
    palette.setColor(QPalette::AlternateBase, QColor(0x26, 0x27, 0x2B));
    for (const auto role :
         {QPalette::WindowText, QPalette::Text, QPalette::ButtonText, QPalette::ToolTipText}) {
        palette.setColor(role, text);
    }
    palette.setColor(QPalette::ToolTipBase, QColor(0x35, 0x36, 0x3A));
    palette.setColor(QPalette::Highlight, QColor(0x2F, 0x65, 0xB5));
    palette.setColor(QPalette::HighlightedText, Qt::white);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(QPalette::Disabled, role, QColor(0x85, 0x85, 0x88));
    }
    QApplication::setPalette(palette);
}

}  // namespace korvane::qt

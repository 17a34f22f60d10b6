// Colours as the windows hold them, made readable on the desktop's palette. The
// windows' own state keeps what was written; only painting differs.
#pragma once

#include <QColor>
#include <QPalette>

#include "platform/screen.h"

namespace korvane::qt {

QColor ToQt(platform::Colour colour);
platform::Colour FromQt(const QColor& colour);

// How well one can be read on the other: 1 (not at all) to 21 (black on white).
double Contrast(const QColor& a, const QColor& b);

// `colour` made lighter or darker until it can be read with `other`; as it is
// when it can be already.
QColor MadeReadable(const QColor& colour, const QColor& other);

// The colour of a text: black is the desktop's own text colour.
QColor TextColour(platform::Colour colour, const QPalette& palette, QPalette::ColorRole text,
                  QPalette::ColorRole background);

// The colour of a thin line round a part of a window, on light and dark alike.
QColor LineColour(const QPalette& palette);

}  // namespace korvane::qt

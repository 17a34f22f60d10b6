// Texts as the windows hold them and as Qt does: both UTF-16.
#pragma once

#include <QString>
#include <string>

namespace korvane::qt {

inline QString ToQt(const std::u16string& text) { return QString::fromStdU16String(text); }
inline std::u16string FromQt(const QString& text) { return text.toStdU16String(); }

// A caption without its access mark, as a label shows it that stands for itself.
QString WithoutMark(const std::u16string& caption);

// Whether an "&" of the caption marks an access key.
bool HasMark(const std::u16string& caption);

// A text for one line: what breaks lines or columns is a blank each.
QString OnOneLine(const std::u16string& text);

}  // namespace korvane::qt

#include "bindings/qt/text.h"

#include <algorithm>

namespace korvane::qt {

QString WithoutMark(const std::u16string& caption) {
    std::u16string shown;
    for (std::size_t k = 0; k < caption.size(); ++k) {
        if (caption[k] == u'&' && k + 1 < caption.size()) ++k;
        shown += caption[k];
    }
    return ToQt(shown);
}

bool HasMark(const std::u16string& caption) {
    for (std::size_t k = 0; k + 1 < caption.size(); ++k) {
        if (caption[k] != u'&') continue;
        if (caption[k + 1] != u'&') return true;
        ++k;
    }
    return false;
}

QString OnOneLine(const std::u16string& text) {
    QString line = ToQt(text);
    std::replace_if(
        line.begin(), line.end(),
        [](QChar ch) {
            return ch.unicode() < 0x20 || ch == QChar::LineSeparator ||
                   ch == QChar::ParagraphSeparator;
        },
        QChar(u' '));
    return line;
}

}  // namespace korvane::qt

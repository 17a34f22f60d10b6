#include "bindings/qt/desktop.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QStyle>
#include <QWindow>

#include "bindings/qt/colours.h"

namespace korvane::qt {
namespace {

platform::MonitorPlace PlaceOf(const QRect& rect) {
    return {rect.left(), rect.top(), rect.left() + rect.width(), rect.top() + rect.height()};
}

}  // namespace

platform::ViewMetrics MetricsOf(const Units& units, const QMargins& frame) {
    platform::ViewMetrics metrics;
    metrics.protocol = platform::kLinkProtocol;
    metrics.twipsPerPixelX = static_cast<float>(units.twipsX);
    metrics.twipsPerPixelY = static_cast<float>(units.twipsY);
    metrics.frame = {units.TwipsX(frame.left()), units.TwipsY(frame.top()),
                     units.TwipsX(frame.right()), units.TwipsY(frame.bottom())};
    // Qt names the primary one first. While no monitor is on it has one without area.
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect bounds = screen->geometry();
        const QRect work = screen->availableGeometry();
        if (bounds.isEmpty()) continue;
        metrics.monitors.push_back({PlaceOf(bounds), PlaceOf(work.isEmpty() ? bounds : work)});
    }
    metrics.windowBackground = FromQt(QGuiApplication::palette().color(QPalette::Base));
    return metrics;
}

QMargins LikelyFrame() {
    if (!KnowsForeignWindows()) return {};
    const int title = QApplication::style()->pixelMetric(QStyle::PM_TitleBarHeight);
    return {1, title, 1, 1};
}

bool CanBeFrame(const QMargins& frame) {
    constexpr int kWidest = 256;  // a title bar on a screen of four times the usual pixels
    const auto isSide = [](int pixels) { return pixels >= 0 && pixels <= kWidest; };
    return !frame.isNull() && isSide(frame.left()) && isSide(frame.top()) &&
           isSide(frame.right()) && isSide(frame.bottom());
}

QMargins MadeFrame(const QWindow* window) {
    const QMargins frame = window != nullptr ? window->frameMargins() : QMargins();
    return CanBeFrame(frame) ? frame : QMargins();
}

bool KnowsForeignWindows() { return QGuiApplication::platformName() == QLatin1String("xcb"); }

}  // namespace korvane::qt

#include "bindings/qt/lost_windows.h"

#include <QCoreApplication>
#include <cstring>
#include <utility>

namespace korvane::qt {
namespace {

// The X11 protocol's DestroyNotify.
struct DestroyNotify {
    quint8 type;
    quint8 unused;
    quint16 sequence;
    quint32 event;   // the window that the event was asked for
    quint32 window;  // the one that is gone
};
constexpr quint8 kDestroyNotify = 17;
constexpr quint8 kSentByProgram = 0x80;  // and not by the server: says nothing

}  // namespace

LostWindows::LostWindows(std::function<void(quintptr window)> onLost) : onLost_(std::move(onLost)) {
    QCoreApplication::instance()->installNativeEventFilter(this);
}

LostWindows::~LostWindows() {
    if (auto* application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

bool LostWindows::nativeEventFilter(const QByteArray& eventType, void* message,
                                    qintptr* /*result*/) {
    if (eventType != "xcb_generic_event_t") return false;
    DestroyNotify event{};
    std::memcpy(&event, message, sizeof event);
    if ((event.type & ~kSentByProgram) == kDestroyNotify && !(event.type & kSentByProgram)) {
        onLost_(event.window);
    }
    return false;
}

}  // namespace korvane::qt

#include "bindings/qt/x_server.h"

#include <QGuiApplication>

namespace korvane::qt {

xcb_connection_t* XServer() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

XEvents::XEvents() { QCoreApplication::instance()->installNativeEventFilter(this); }

XEvents::~XEvents() {
    if (auto* application = QCoreApplication::instance())
        application->removeNativeEventFilter(this);
}

bool XEvents::nativeEventFilter(const QByteArray& eventType, void* message, qintptr* /*result*/) {
    if (eventType == "xcb_generic_event_t") Hear(*static_cast<xcb_generic_event_t*>(message));
    return false;
}

}  // namespace korvane::qt

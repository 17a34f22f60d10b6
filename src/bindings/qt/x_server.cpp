#include "bindings/qt/x_server.h"

#include <QGuiApplication>

namespace korvane::qt {

xcb_connection_t* XServer() {
    const auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

}  // namespace korvane::qt

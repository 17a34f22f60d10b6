// The X server, where windows are on one.
#pragma once

#include <xcb/xcb.h>

#include <QAbstractNativeEventFilter>

namespace korvane::qt {

// The toolkit's own connection to it; null where the toolkit uses another window system.
xcb_connection_t* XServer();

// Hears, while it lives, what the server tells the toolkit. Elsewhere it hears nothing.
class XEvents : public QAbstractNativeEventFilter {
public:
    XEvents();
    ~XEvents() override;
    XEvents(const XEvents&) = delete;
    XEvents& operator=(const XEvents&) = delete;

    bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) final;

private:
    // The toolkit gets the event all the same.
    virtual void Hear(const xcb_generic_event_t& event) = 0;
};

}  // namespace korvane::qt

#include "bindings/qt/active_window.h"

#include <QWindow>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <utility>

namespace korvane::qt {

namespace {

constexpr const char* kActiveWindow = "_NET_ACTIVE_WINDOW";

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};
using Property = std::unique_ptr<xcb_get_property_reply_t, Free>;

xcb_atom_t AtomOf(xcb_connection_t* server, const char* name) {
    const auto length = static_cast<std::uint16_t>(std::strlen(name));
    const std::unique_ptr<xcb_intern_atom_reply_t, Free> reply(
        xcb_intern_atom_reply(server, xcb_intern_atom(server, 0, length, name), nullptr));
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

Property Get(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property) {
    constexpr std::uint32_t kLongest = 64;  // in units of four bytes
    const auto asked = xcb_get_property(server, 0, window, property, XCB_ATOM_ANY, 0, kLongest);
    return Property(xcb_get_property_reply(server, asked, nullptr));
}

xcb_window_t Root(xcb_connection_t* server) {
    return xcb_setup_roots_iterator(xcb_get_setup(server)).data->root;
}

// The property as one number; 0 without.
std::uint32_t GetNumber(xcb_connection_t* server, xcb_window_t window, xcb_atom_t property) {
    const auto value = Get(server, window, property);
    std::uint32_t number = 0;
    if (value && value->format == 32 && xcb_get_property_value_length(value.get()) >= 4) {
        std::memcpy(&number, xcb_get_property_value(value.get()), sizeof number);
    }
    return number;
}

std::uint32_t ProcessOf(xcb_connection_t* server, xcb_window_t window) {
    return GetNumber(server, window, AtomOf(server, "_NET_WM_PID"));
}

}  // namespace

ActiveWindow::ActiveWindow(std::function<void()> changed) {
    if (!XServer()) return;
    atom_ = AtomOf(XServer(), kActiveWindow);
    soon_.setSingleShot(true);
    constexpr std::chrono::milliseconds kRest{80};
    soon_.setInterval(kRest);
    QObject::connect(&soon_, &QTimer::timeout, std::move(changed));
}

// The toolkit has asked for the root window's changes for itself.
void ActiveWindow::Hear(const xcb_generic_event_t& event) {
    if ((event.response_type & 0x7F) != XCB_PROPERTY_NOTIFY) return;
    if (reinterpret_cast<const xcb_property_notify_event_t&>(event).atom == atom_) Look();
}

void ActiveWindow::Look() {
    if (atom_ != XCB_ATOM_NONE && !soon_.isActive()) soon_.start();
}

std::optional<KeyboardHolder> ActiveWindow::Holder() const {
    xcb_connection_t* const server = XServer();
    if (!server) return std::nullopt;
    KeyboardHolder holder;
    holder.window = GetNumber(server, Root(server), atom_);
    if (holder.window == XCB_WINDOW_NONE) return std::nullopt;
    const auto title = Get(server, holder.window, XCB_ATOM_WM_NAME);
    if (!title) return std::nullopt;
    holder.title = QByteArray(static_cast<const char*>(xcb_get_property_value(title.get())),
                              xcb_get_property_value_length(title.get()));
    holder.process = ProcessOf(server, holder.window);
    holder.hasOwner = GetNumber(server, holder.window, XCB_ATOM_WM_TRANSIENT_FOR) != 0;
    return holder;
}

quint32 ProcessOf(const QWindow& window) {
    xcb_connection_t* const server = XServer();
    return server ? ProcessOf(server, static_cast<xcb_window_t>(window.winId())) : 0;
}

void ActivateAny(const QWindow& window) {
    xcb_connection_t* const server = XServer();
    if (!server) return;
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = static_cast<xcb_window_t>(window.winId());
    message.type = AtomOf(server, kActiveWindow);
    constexpr std::uint32_t kByTaskBar = 2;
    message.data.data32[0] = kByTaskBar;
    const auto heard = XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_send_event(server, 0, Root(server), heard, reinterpret_cast<const char*>(&message));
    xcb_flush(server);
}

}  // namespace korvane::qt

// The desktop as the view tells of it.
#pragma once

#include <functional>

#include "bindings/view_link/view_link.h"
#include "platform/screen.h"

namespace korvane::view_link {

// Sizes and colours are those of the last view, also when it is gone; before the
// first, those of an ordinary desktop. Windows that are not the system's own are
// the host's to know.
class LinkedScreen : public platform::Screen {
public:
    // The link outlives the screen.
    explicit LinkedScreen(const ViewLink& link) : link_(link) {}

    double TwipsPerPixelX() override { return link_.metrics().twipsPerPixelX; }
    double TwipsPerPixelY() override { return link_.metrics().twipsPerPixelY; }
    double Width() override;
    double Height() override;
    std::optional<platform::PixelRect> WindowRect(std::int64_t handle) override;
    std::optional<platform::Monitor> MonitorOf(const platform::PixelRect& rect) override;
    // The host's windows come before the system's own.
    std::int64_t FindWindow(const std::u16string& title) override;
    platform::Colour WindowBackground() override { return link_.metrics().windowBackground; }

    // Answer for the host's windows, as the members of these names do. Empty: the
    // host has none.
    std::function<std::optional<platform::PixelRect>(std::int64_t handle)> windowRect;
    std::function<std::int64_t(const std::u16string& title)> findWindow;

private:
    platform::PixelRect Primary() const;

    const ViewLink& link_;
};

}  // namespace korvane::view_link

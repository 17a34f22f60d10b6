// A desktop of monitors and other programs' windows, as a test lays it out.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "platform/screen.h"

namespace korvane::scripted {

class ScriptedScreen : public platform::Screen {
public:
    explicit ScriptedScreen(std::shared_ptr<Accesses> accesses) : accesses_(std::move(accesses)) {}

    double TwipsPerPixelX() override;
    double TwipsPerPixelY() override;
    // Both raise kErrorApplication without any monitor.
    double Width() override;
    double Height() override;
    std::optional<platform::PixelRect> WindowRect(std::int64_t handle) override;
    // The first of those that hold equally much.
    std::optional<platform::Monitor> MonitorOf(const platform::PixelRect& rect) override;
    // The lowest handle of several windows with the title.
    std::int64_t FindWindow(const std::u16string& title) override;
    platform::Colour WindowBackground() override;

    struct Window {
        std::u16string title;
        platform::PixelRect rect;
    };

    double twipsPerPixelX = 15;
    double twipsPerPixelY = 15;
    // The first is the primary one.
    std::vector<platform::Monitor> monitors{{{0, 0, 1920, 1080}, {0, 0, 1920, 1040}}};
    bool monitorsKnown = true;               // false: MonitorOf knows nothing
    std::map<std::int64_t, Window> windows;  // by handle
    platform::Colour windowBackground = platform::Rgb(255, 255, 255);

private:
    const platform::PixelRect& Primary() const;

    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted

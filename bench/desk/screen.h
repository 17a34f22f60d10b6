// What can be seen on a desktop, and when.
#pragma once

#include <X11/Xlib.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace korvane::bench {

// A rectangle of the desktop, in pixels.
struct Strip {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;
    // So many pixels may be others and it still looks the same: a keyboard's focus
    // frames something as soon as the window manager gives it.
    std::size_t tolerance = 0;
    bool operator==(const Strip&) const = default;
};

// Presses keys as a keyboard would and looks at the pixels, as a user does.
// Throws std::runtime_error when the desktop cannot be reached.
class Screen {
public:
    explicit Screen(const std::string& display);
    ~Screen();
    Screen(const Screen&) = delete;
    Screen& operator=(const Screen&) = delete;

    // A key of the keyboard, down and up, as XStringToKeysym calls it.
    void Press(const char* key, const char* modifier = nullptr);

    // Where the visible windows with this title are (without their frames).
    std::vector<Strip> Windows(const std::string& title);
    // The title of the window with the keyboard.
    std::string ActiveTitle();
    // Waits until `good`, for ten seconds at most.
    static bool Until(const std::function<bool()>& good);

    // Runs `act` and watches the strips until nothing has been drawn in them for a
    // while. For each the milliseconds until it looked as it does in the end;
    // nothing for one that did not change.
    std::vector<std::optional<double>> Watch(const std::vector<Strip>& strips,
                                             const std::function<void()>& act);

private:
    using Pixels = std::vector<std::uint32_t>;
    Pixels Look(const Strip& strip);
    std::string TextOf(::Window window, const char* property);

    ::Display* display_;
    ::Window root_;
    unsigned long damage_ = 0;
    int firstDamage_ = 0;
};

}  // namespace korvane::bench

#include "screen.h"

#include <X11/Xatom.h>
#include <X11/Xutil.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <stdexcept>
#include <thread>

namespace korvane::bench {
namespace {

using Clock = std::chrono::steady_clock;
using namespace std::chrono_literals;

// So long nothing is drawn any more when something has ended.
constexpr auto kQuiet = 250ms;
constexpr auto kPatience = 10s;

double Milliseconds(Clock::duration time) {
    return std::chrono::duration<double, std::milli>(time).count();
}

bool Touches(const Strip& strip, const XRectangle& drawn) {
    return drawn.x < strip.x + strip.width && strip.x < drawn.x + drawn.width &&
           drawn.y < strip.y + strip.height && strip.y < drawn.y + drawn.height;
}

// A window may go at any time.
int Ignore(::Display* /*display*/, XErrorEvent* /*error*/) { return 0; }

}  // namespace

Screen::Screen(const std::string& display) : display_(XOpenDisplay(display.c_str())), root_(0) {
    if (display_ == nullptr) throw std::runtime_error("no display " + display);
    XSetErrorHandler(Ignore);
    root_ = DefaultRootWindow(display_);
    int firstError = 0;
    if (!XDamageQueryExtension(display_, &firstDamage_, &firstError)) {
        throw std::runtime_error("the X server does not tell of what is drawn");
    }
    damage_ = XDamageCreate(display_, root_, XDamageReportRawRectangles);
    XSync(display_, False);
}

Screen::~Screen() { XCloseDisplay(display_); }

void Screen::Press(const char* key, const char* modifier) {
    const auto code = [this](const char* name) {
        return XKeysymToKeycode(display_, XStringToKeysym(name));
    };
    if (modifier != nullptr) XTestFakeKeyEvent(display_, code(modifier), True, CurrentTime);
    XTestFakeKeyEvent(display_, code(key), True, CurrentTime);
    XTestFakeKeyEvent(display_, code(key), False, CurrentTime);
    if (modifier != nullptr) XTestFakeKeyEvent(display_, code(modifier), False, CurrentTime);
    XFlush(display_);
}

std::string Screen::TextOf(::Window window, const char* property) {
    Atom type = 0;
    int format = 0;
    unsigned long count = 0;
    unsigned long left = 0;
    unsigned char* bytes = nullptr;
    XGetWindowProperty(display_, window, XInternAtom(display_, property, False), 0, 1000, False,
                       AnyPropertyType, &type, &format, &count, &left, &bytes);
    if (bytes == nullptr) return {};
    std::string text(reinterpret_cast<const char*>(bytes), format == 32 ? count * 8 : count);
    XFree(bytes);
    return text;
}

std::vector<Strip> Screen::Windows(const std::string& title) {
    std::vector<Strip> found;
    const std::string list = TextOf(root_, "_NET_CLIENT_LIST");
    const auto* const windows = reinterpret_cast<const unsigned long*>(list.data());
    for (std::size_t k = 0; k < list.size() / sizeof *windows; ++k) {
        const ::Window window = windows[k];
        XWindowAttributes attributes;
        if (TextOf(window, "_NET_WM_NAME").rfind(title, 0) != 0) continue;
        if (XGetWindowAttributes(display_, window, &attributes) == 0) continue;
        if (attributes.map_state != IsViewable) continue;
        int x = 0;
        int y = 0;
        ::Window child = 0;
        XTranslateCoordinates(display_, window, root_, 0, 0, &x, &y, &child);
        found.push_back({x, y, attributes.width, attributes.height});
    }
    return found;
}

std::string Screen::ActiveTitle() {
    const std::string active = TextOf(root_, "_NET_ACTIVE_WINDOW");
    if (active.size() < sizeof(unsigned long)) return {};
    const ::Window window = *reinterpret_cast<const unsigned long*>(active.data());
    return window == 0 ? std::string() : TextOf(window, "_NET_WM_NAME");
}

bool Screen::Until(const std::function<bool()>& good) {
    for (const auto end = Clock::now() + kPatience; !good();) {
        if (Clock::now() > end) return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

Screen::Pixels Screen::Look(const Strip& strip) {
    XImage* const image =
        XGetImage(display_, root_, strip.x, strip.y, static_cast<unsigned>(strip.width),
                  static_cast<unsigned>(strip.height), AllPlanes, ZPixmap);
    if (image == nullptr) throw std::runtime_error("a strip is not on the desktop");
    const auto* const first = reinterpret_cast<const std::uint32_t*>(image->data);
    Pixels pixels(first, first + static_cast<std::size_t>(image->bytes_per_line) / 4 *
                                     static_cast<std::size_t>(image->height));
    XDestroyImage(image);
    return pixels;
}

std::vector<std::optional<double>> Screen::Watch(const std::vector<Strip>& strips,
                                                 const std::function<void()>& act) {
    struct Seen {
        Clock::time_point when;
        Pixels pixels;
    };
    std::vector<std::vector<Seen>> seen(strips.size());
    XSync(display_, True);
    for (std::size_t k = 0; k < strips.size(); ++k) seen[k].push_back({{}, Look(strips[k])});
    const auto began = Clock::now();
    act();
    const auto isDone = [&] {
        const auto now = Clock::now();
        if (now - began > kPatience) return true;
        return std::all_of(seen.begin(), seen.end(), [now](const auto& of) {
            return of.size() > 1 && now - of.back().when > kQuiet;
        });
    };
    while (!isDone()) {
        pollfd wait{ConnectionNumber(display_), POLLIN, 0};
        if (XPending(display_) == 0) ::poll(&wait, 1, 20);
        std::vector<bool> touched(strips.size());
        const auto now = Clock::now();
        while (XPending(display_) > 0) {
            XEvent event;
            XNextEvent(display_, &event);
            if (event.type != firstDamage_ + XDamageNotify) continue;
            const auto& drawn = reinterpret_cast<const XDamageNotifyEvent&>(event).area;
            for (std::size_t k = 0; k < strips.size(); ++k) {
                if (Touches(strips[k], drawn)) touched[k] = true;
            }
        }
        for (std::size_t k = 0; k < strips.size(); ++k) {
            if (!touched[k]) continue;
            Pixels pixels = Look(strips[k]);
            if (pixels != seen[k].back().pixels) seen[k].push_back({now, std::move(pixels)});
        }
    }
    std::vector<std::optional<double>> times;
    for (std::size_t strip = 0; strip < strips.size(); ++strip) {
        const auto& of = seen[strip];
        const Pixels& last = of.back().pixels;
        const auto isLast = [&](const Seen& one) {
            std::size_t others = 0;
            for (std::size_t k = 0; k < last.size(); ++k) others += one.pixels[k] != last[k];
            return others <= strips[strip].tolerance;
        };
        if (of.size() == 1 || isLast(of.front())) {
            times.emplace_back();
            continue;
        }
        const auto first = std::find_if(of.begin() + 1, of.end(), isLast);
        times.emplace_back(Milliseconds(first->when - began));
    }
    return times;
}

}  // namespace korvane::bench

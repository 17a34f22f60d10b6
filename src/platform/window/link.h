// What goes between the windows and a view in another process, beside changes
// and events: what the view's desktop is like, message boxes, and signs of life.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "platform/message_boxes.h"
#include "platform/screen.h"
#include "platform/window/change.h"
#include "platform/window/event.h"

namespace korvane::platform {

// ---- from the view -------------------------------------------------------

struct MonitorPlace {
    std::int32_t left = 0;  // pixels; right and bottom lie outside
    std::int32_t top = 0;
    std::int32_t right = 0;
    std::int32_t bottom = 0;
    friend bool operator==(const MonitorPlace&, const MonitorPlace&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.left, self.top, self.right, self.bottom);
    }
};

struct ViewMonitor {
    MonitorPlace bounds;
    MonitorPlace work;
    friend bool operator==(const ViewMonitor&, const ViewMonitor&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.bounds, self.work);
    }
};

// The view's first message, and again whenever it changes.
struct ViewMetrics {
    // Which protocol the view speaks; a view of another one is let go of.
    std::int32_t protocol = 0;
    float twipsPerPixelX = 0;  // as Screen has it; from the view's font
    float twipsPerPixelY = 0;
    FrameSize frame;                    // what the desktop's frames add to a window
    std::vector<ViewMonitor> monitors;  // the first is the primary one
    Colour windowBackground = 0;
    friend bool operator==(const ViewMetrics&, const ViewMetrics&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.protocol, self.twipsPerPixelX, self.twipsPerPixelY, self.frame,
                        self.monitors, self.windowBackground);
    }
};

inline constexpr std::int32_t kLinkProtocol = 2;

struct MessageAnswered {
    std::int32_t id = 0;
    MessageAnswer answer = MessageAnswer::kOK;
    friend bool operator==(const MessageAnswered&, const MessageAnswered&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.id, self.answer);
    }
};

// The answer to a Ping: the view has done everything that came before.
struct Pong {
    std::int32_t number = 0;
    friend bool operator==(const Pong&, const Pong&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.number);
    }
};

using FromView = std::variant<ViewMetrics, Event, MessageAnswered, Pong>;

// ---- to the view ---------------------------------------------------------

// A message box over the window that has the user's attention.
struct MessageAsked {
    std::int32_t id = 0;
    std::u16string text;
    std::u16string title;
    MessageIcon icon = MessageIcon::kNone;
    MessageButtons buttons = MessageButtons::kOK;
    std::int64_t owner = 0;  // the host's window that it is asked over; 0 for none
    friend bool operator==(const MessageAsked&, const MessageAsked&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.id, self.text, self.title, self.icon, self.buttons, self.owner);
    }
};

// The user has tried to go on without answering: the window or message box that waits
// for him comes to the front, above the host's window where he tried it (0 for none),
// with the keyboard.
struct AnswerWanted {
    std::int64_t owner = 0;
    friend bool operator==(const AnswerWanted&, const AnswerWanted&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.owner);
    }
};

// Nobody waits for the answer any more: the box goes.
struct MessageDropped {
    std::int32_t id = 0;
    friend bool operator==(const MessageDropped&, const MessageDropped&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.id);
    }
};

struct Ping {
    std::int32_t number = 0;
    friend bool operator==(const Ping&, const Ping&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.number);
    }
};

// Text that the view shows beside the windows, such as which cells are selected
// in a workbook that has no window of its own; empty takes it away.
struct StatusShown {
    std::u16string text;
    friend bool operator==(const StatusShown&, const StatusShown&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.text);
    }
};

using ToView =
    std::variant<Change, MessageAsked, MessageDropped, Ping, StatusShown, AnswerWanted>;

}  // namespace korvane::platform

// Questions and notices that stop the user until he answers.
#pragma once

#include <cstdint>
#include <string>

namespace korvane::platform {

enum class MessageIcon : std::uint8_t { kNone, kCritical, kQuestion, kInformation, kCount_ };
enum class MessageButtons : std::uint8_t { kOK, kYesNo, kCount_ };
enum class MessageAnswer : std::uint8_t { kOK, kYes, kNo, kCount_ };

struct Message {
    std::u16string text;
    std::u16string title;
    MessageIcon icon = MessageIcon::kNone;
    MessageButtons buttons = MessageButtons::kOK;
};

class MessageBoxes {
public:
    virtual ~MessageBoxes() = default;
    // Shows the message over the window that has the user's attention and
    // returns when he has answered: kOK, or kYes or kNo for kYesNo (a box closed
    // without an answer is kNo). The user reaches no window of the system
    // meanwhile. Raises when no box can be shown.
    virtual MessageAnswer Show(const Message& message) = 0;
};

}  // namespace korvane::platform

// Message boxes that a script answers.
#pragma once

#include <deque>
#include <functional>
#include <memory>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "platform/message_boxes.h"
#include "platform/window/windows.h"

namespace korvane::scripted {

class ScriptedMessageBoxes : public platform::MessageBoxes {
public:
    explicit ScriptedMessageBoxes(std::shared_ptr<Accesses> accesses)
        : accesses_(std::move(accesses)) {}

    platform::MessageAnswer Show(const platform::Message& message) override;

    // Every message that was shown, in order.
    std::vector<platform::Message> shown;
    // The user's coming answers. A box takes the first when it has a button for
    // it; otherwise the answer waits, and the box is answered kOK or kNo.
    std::deque<platform::MessageAnswer> answers;
    // What happens while a box is open, before it is answered. A box that is
    // shown from here is just answered.
    std::function<void(const platform::Message&)> whileShown;
    int open = 0;  // boxes that stand on the screen now
    // The windows that the user does not reach while a box is open; null for none.
    platform::Windows* windows = nullptr;

private:
    platform::MessageAnswer NextAnswer(platform::MessageButtons buttons);

    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted

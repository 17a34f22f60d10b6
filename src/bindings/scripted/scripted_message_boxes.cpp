#include "bindings/scripted/scripted_message_boxes.h"

#include <optional>

#include "bindings/scripted/depth.h"

namespace korvane::scripted {

using platform::MessageAnswer;

MessageAnswer ScriptedMessageBoxes::Show(const platform::Message& message) {
    accesses_->Enter("MessageBoxes.Show", message.text);
    shown.push_back(message);
    const Deeper deeper(open);
    std::optional<platform::ModalScope> modal;
    if (windows) modal.emplace(*windows, nullptr);
    if (open == 1 && whileShown) {
        const auto meanwhile = whileShown;  // it may put another in its place
        meanwhile(message);
    }
    return NextAnswer(message.buttons);
}

MessageAnswer ScriptedMessageBoxes::NextAnswer(platform::MessageButtons buttons) {
    const bool isQuestion = buttons == platform::MessageButtons::kYesNo;
    if (!answers.empty() && (answers.front() != MessageAnswer::kOK) == isQuestion) {
        const MessageAnswer answer = answers.front();
        answers.pop_front();
        return answer;
    }
    return isQuestion ? MessageAnswer::kNo : MessageAnswer::kOK;
}

}  // namespace korvane::scripted

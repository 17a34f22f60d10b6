#include "bindings/view_link/linked_message_boxes.h"

#include <string>

#include "base/error.h"

namespace korvane::view_link {

using platform::MessageAnswer;
using platform::MessageButtons;

namespace {

// No screen holds more, and no message to a view may be of any length.
constexpr std::size_t kLongestText = 20'000;

// A question that was closed is answered by No, and so is one that was answered
// by a button that it does not have.
MessageAnswer Fitting(std::optional<MessageAnswer> answer, MessageButtons buttons) {
    if (buttons != MessageButtons::kYesNo) return MessageAnswer::kOK;
    return answer == MessageAnswer::kYes ? MessageAnswer::kYes : MessageAnswer::kNo;
}

}  // namespace

// A box that stands on the view's screen until somebody answers or we let go.
class LinkedMessageBoxes::OpenBox {
public:
    OpenBox(LinkedMessageBoxes& boxes, const platform::Message& message)
        : boxes_(boxes), id_(++boxes.lastId_), generation_(boxes.link_.generation()) {
        boxes_.open_[id_];
        boxes_.link_.Send(platform::MessageAsked{id_, message.text.substr(0, kLongestText),
                                                 message.title.substr(0, kLongestText),
                                                 message.icon, message.buttons, boxes_.owner});
    }
    ~OpenBox() {
        if (IsThere() && !Answer()) boxes_.link_.Send(platform::MessageDropped{id_});
        boxes_.open_.erase(id_);
    }
    OpenBox(const OpenBox&) = delete;
    OpenBox& operator=(const OpenBox&) = delete;

    // Another view does not know of it.
    bool IsThere() const {
        return boxes_.link_.HasView() && boxes_.link_.generation() == generation_;
    }
    std::optional<MessageAnswer> Answer() const { return boxes_.open_.at(id_); }

private:
    LinkedMessageBoxes& boxes_;
    std::int32_t id_;
    std::int32_t generation_;
};

LinkedMessageBoxes::LinkedMessageBoxes(ViewLink& link, platform::Windows& windows)
    : link_(link), windows_(windows) {
    link_.onAnswer = [this](const auto& answered) { Take(answered); };
}

LinkedMessageBoxes::~LinkedMessageBoxes() { link_.onAnswer = nullptr; }

MessageAnswer LinkedMessageBoxes::Show(const platform::Message& message) {
    if (!link_.EnsureView()) throw Error(kErrorApplication, u"The message cannot be shown");
    const OpenBox box(*this, message);
    const platform::ModalScope scope(windows_, nullptr);
    windows_.modal().Run([&box] { return box.Answer() || !box.IsThere(); });
    return Fitting(box.Answer(), message.buttons);
}

// An answer that nobody waits for has passed the word that its box goes.
void LinkedMessageBoxes::Take(const platform::MessageAnswered& answered) {
    const auto box = open_.find(answered.id);
    if (box != open_.end() && !box->second) box->second = answered.answer;
}

}  // namespace korvane::view_link

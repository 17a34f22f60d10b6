// Message boxes that a view shows.
#pragma once

#include <map>
#include <optional>

#include "bindings/view_link/view_link.h"
#include "platform/message_boxes.h"

namespace korvane::view_link {

class LinkedMessageBoxes : public platform::MessageBoxes {
public:
    // Both outlive the boxes. Takes the link's onAnswer.
    LinkedMessageBoxes(ViewLink& link, platform::Windows& windows);
    ~LinkedMessageBoxes() override;
    LinkedMessageBoxes(const LinkedMessageBoxes&) = delete;
    LinkedMessageBoxes& operator=(const LinkedMessageBoxes&) = delete;

    // Waits in the windows' modal loop. A box whose view is lost counts as closed
    // by the user. Starts a view when there is none.
    platform::MessageAnswer Show(const platform::Message& message) override;

    // The host's window that boxes stay above when no window of ours is active; 0 for
    // none.
    std::int64_t owner = 0;

private:
    class OpenBox;

    void Take(const platform::MessageAnswered& answered);

    ViewLink& link_;
    platform::Windows& windows_;
    std::int32_t lastId_ = 0;
    // What the boxes that are waited for were answered.
    std::map<std::int32_t, std::optional<platform::MessageAnswer>> open_;
};

}  // namespace korvane::view_link

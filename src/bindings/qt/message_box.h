// Questions and notices on the desktop.
#pragma once

#include <QMessageBox>
#include <functional>
#include <map>

#include "platform/window/link.h"

namespace korvane::qt {

// Shows message boxes; the answers come later.
class AskedMessages {
public:
    explicit AskedMessages(std::function<void(const platform::MessageAnswered&)> tell)
        : tell_(std::move(tell)) {}
    AskedMessages(const AskedMessages&) = delete;
    AskedMessages& operator=(const AskedMessages&) = delete;
    ~AskedMessages();

    // `owner` may be null. The box keeps the user from all other windows.
    void Ask(const platform::MessageAsked& message, QWindow* owner);
    // Takes a box away without an answer.
    void Drop(std::int32_t id);
    // Null when there is no such box.
    QMessageBox* Find(std::int32_t id) const;

private:
    void Answer(std::int32_t id, platform::MessageAnswer answer);

    std::function<void(const platform::MessageAnswered&)> tell_;
    std::map<std::int32_t, QMessageBox*> boxes_;
};

}  // namespace korvane::qt

#include "bindings/view_link/crossings.h"

#include <type_traits>
#include <variant>

namespace korvane::view_link {
namespace {

using platform::kFormItself;

// What a change or event is about. That a control has the focus is a property of
// its window.
template <class Message>
auto SubjectOf(const Message& message) {
    return std::visit(
        [](const auto& what) {
            using What = std::decay_t<decltype(what)>;
            if constexpr (std::is_same_v<What, platform::WindowFocused>) {
                return std::pair(platform::WindowId{0}, kFormItself);
            } else if constexpr (std::is_same_v<What, platform::ControlFocused> ||
                                 !requires { what.control; }) {
                return std::pair(what.window, kFormItself);
            } else {
                return std::pair(what.window, what.control);
            }
        },
        message);
}

}  // namespace

void Crossings::Add(const platform::Change& change, std::int32_t ping) {
    const Key key = SubjectOf(change);
    if (key.first == 0) return;
    // A tree is filled row by row: nearly always it is the same control again.
    if (last_ == open_.end() || last_->first != key) last_ = open_.try_emplace(key).first;
    last_->second = ping;
}

void Crossings::Settle(std::int32_t ping) {
    std::erase_if(open_, [ping](const auto& entry) { return entry.second == ping; });
    last_ = open_.end();
}

bool Crossings::Crosses(const platform::Event& event) const {
    return open_.contains(SubjectOf(event));
}

}  // namespace korvane::view_link

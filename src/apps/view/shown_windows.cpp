#include "apps/view/shown_windows.h"

#include <type_traits>
#include <variant>

namespace korvane::view {

ShownWindows::ShownWindows(Connection& connection)
    : connection_(connection),
      view_({[this](const platform::Event& event) { connection_.Send(event); },
             [this](const platform::MessageAnswered& answer) { connection_.Send(answer); },
             [this](const platform::ViewMetrics& metrics) { connection_.Send(metrics); }}) {
    view_.SetPictures(pictures_);
    connection_.onMessage = [this](const platform::ToView& message) { Take(message); };
    connection_.Send(view_.Metrics());
}

ShownWindows::~ShownWindows() { connection_.onMessage = nullptr; }

void ShownWindows::Take(const platform::ToView& message) {
    std::visit(
        [this](const auto& what) {
            using What = std::decay_t<decltype(what)>;
            if constexpr (std::is_same_v<What, platform::Change>) {
                view_.Apply(what);
            } else if constexpr (std::is_same_v<What, platform::MessageAsked>) {
                view_.Ask(what);
            } else if constexpr (std::is_same_v<What, platform::MessageDropped>) {
                view_.Drop(what);
            } else if constexpr (std::is_same_v<What, platform::StatusShown>) {
                view_.ShowStatus(what);
            } else if constexpr (std::is_same_v<What, platform::AnswerWanted>) {
                view_.WantAnswer(what);
            } else {
                // The answer says that everything before is done.
                view_.Settle();
                connection_.Send(platform::Pong{what.number});
            }
        },
        message);
}

}  // namespace korvane::view

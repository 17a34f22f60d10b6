// korvane-view with a model at the other end, for tests.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/child.h"
#include "platform/window/codec.h"
#include "platform/window/windows.h"

namespace korvane::test {

class ViewUnderTest : public platform::View, public platform::ModalLoop {
public:
    explicit ViewUnderTest(std::vector<std::string> environment = {"QT_QPA_PLATFORM=offscreen"},
                           std::vector<std::string> arguments = {});
    ~ViewUnderTest() override;

    void Apply(const platform::Change& change) override { Send(change); }
    void Send(const platform::ToView& message);
    void SendBytes(const std::string& bytes);
    void HangUp();

    // Takes what the view sends and has the windows do it, until `done` or the
    // time is over; false for the latter.
    bool TakeUntil(const std::function<bool()>& done, std::chrono::milliseconds time = 10s);
    // Until the view has done all that it was sent, and is idle.
    bool Settle();
    void Run(const std::function<bool()>& done) override { TakeUntil(done); }

    // What came, besides events, which go to the windows too.
    std::vector<platform::ViewMetrics> metrics;
    std::vector<platform::Event> events;
    std::vector<platform::MessageAnswered> answers;
    std::vector<std::int32_t> pongs;

    platform::Windows windows{*this};
    Child& process() { return *process_; }

    template <class E>
    std::vector<E> Told() const {
        std::vector<E> found;
        for (const auto& event : events) {
            if (const auto* what = std::get_if<E>(&event)) found.push_back(*what);
        }
        return found;
    }

private:
    bool TakeSome(std::chrono::milliseconds time);
    void Take(const platform::FromView& message);

    int link_ = -1;
    std::string incoming_;
    std::int32_t ping_ = 0;
    std::unique_ptr<Child> process_;
};

}  // namespace korvane::test

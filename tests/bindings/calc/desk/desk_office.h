// An office with windows and a private profile, on a desktop of the test's own,
// with the component of this folder in it.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>

#include "apps/view/child.h"
#include "apps/view/desktop.h"

namespace korvane::test {

class DeskOffice {
public:
    // Why there can be none here; empty when there can.
    static std::string WhyNot();

    // `folder` holds the profile and is the test's to remove. Comes back when a
    // spreadsheet's window is there and has the focus.
    DeskOffice(const Desktop& desktop, const std::filesystem::path& folder);
    ~DeskOffice();
    DeskOffice(const DeskOffice&) = delete;
    DeskOffice& operator=(const DeskOffice&) = delete;

    bool ready() const { return ready_; }
    // Has the component carry an order out (see TestedAddin); lines are
    // divided by "|" in its answer. "lost" when the office is gone.
    std::string Ask(const std::string& order);
    // What Ask("log") says when it is `wanted`, or after a while.
    std::string Log(const std::string& wanted);
    // Asks until `good` is content with the answer, or for a while; the answer.
    std::string AskUntil(const std::string& order,
                         const std::function<bool(const std::string&)>& good);
    // How the process ended (as waitpid says); -1 when it runs on.
    int WaitForEnd();

private:
    void Start(const std::vector<std::string>& command, const Desktop& desktop);
    void Focus(const Desktop& desktop);

    int socket_ = -1;
    std::unique_ptr<Child> process_;
    bool ready_ = false;
};

}  // namespace korvane::test

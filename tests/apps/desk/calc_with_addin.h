// A Calc with windows and the add-in in it, on a desktop of the test's own.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "apps/view/child.h"
#include "apps/view/desktop.h"

namespace korvane::test {

class CalcWithAddin {
public:
    // Why there can be none here; empty when there can.
    static std::string WhyNot();

    // Opens `book` with a profile in `folder`, which is the test's to remove.
    CalcWithAddin(const Desktop& desktop, const std::filesystem::path& folder,
                  const std::filesystem::path& book);
    ~CalcWithAddin();
    CalcWithAddin(const CalcWithAddin&) = delete;
    CalcWithAddin& operator=(const CalcWithAddin&) = delete;

    // The book's window is there and has the keyboard.
    bool ready() const { return ready_; }
    pid_t id() const { return process_->id(); }
    // What the documents hold; see desk_probe.cpp. "lost" when the office is gone.
    std::string Ask(const std::string& order);
    // Asks until `good` is content, or for a while; the last answer.
    std::string AskUntil(const std::string& order,
                         const std::function<bool(const std::string&)>& good);
    // How the process ended (as waitpid says); -1 when it runs on.
    int WaitForEnd();
    // The processes that show the add-in's windows.
    std::vector<pid_t> Views() const;
    // Gives the window of a book the keyboard.
    bool Focus(const std::string& book);
    // Windows with this title that can be seen, once there are `count`; or after
    // a while, as many as there are.
    int Windows(const std::string& title, int count) const;

private:
    const Desktop& desktop_;
    int socket_ = -1;
    std::unique_ptr<Child> process_;
    bool ready_ = false;
};

}  // namespace korvane::test

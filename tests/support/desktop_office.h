// An office with windows and a private profile, on a desktop of the test's own,
// with components of tests in it that answer by lines on a socket.
#pragma once

#include <sys/types.h>

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/child.h"
#include "support/desktop.h"

namespace korvane::test {

// What a library brings into the office.
struct OfficePart {
    std::string library;         // its file
    std::string implementation;  // its name, and that of the service
    std::string constructor;
    bool singleton = false;  // there is one, which others can ask for by name
    bool isStarted = false;  // as a job of the office's start
};

// In the environment of an office that recovers what it was busy with when it died.
inline constexpr const char* kRecovers = "KORVANE_TEST_RECOVERS=1";

class DesktopOffice {
public:
    // Why there can be none here; empty when there can.
    static std::string WhyNot();

    // `folder` holds the profile and is the test's to remove; `arguments` are the
    // office's own, such as a file to open; `environment` is added to the desktop's.
    // A part answers on descriptor 3, see office_orders.h. Comes back when it
    // answers "ready" with "yes", or after a while.
    DesktopOffice(const Desktop& desktop, const std::filesystem::path& folder,
                  const std::vector<OfficePart>& parts, const std::vector<std::string>& arguments,
                  const std::vector<std::string>& environment = {});
    ~DesktopOffice();
    DesktopOffice(const DesktopOffice&) = delete;
    DesktopOffice& operator=(const DesktopOffice&) = delete;

    bool ready() const { return ready_; }
    pid_t id() const { return process_->id(); }
    // Has an order carried out on the office's main thread; its answer. "lost" when
    // the office is gone.
    std::string Ask(const std::string& order);
    // Asks until `good` is content, or for a while; the last answer.
    std::string AskUntil(const std::string& order,
                         const std::function<bool(const std::string&)>& good);
    // How the process ended (as waitpid says); -1 when it runs on.
    int WaitForEnd();
    // Gives the window whose title begins so the keyboard.
    bool Focus(const std::string& title);

protected:
    const Desktop& desktop() const { return desktop_; }
    // Waits until `good`, or for a while.
    static bool Until(const std::function<bool()>& good);

private:
    void Start(const std::vector<std::string>& command,
               const std::vector<std::string>& environment);

    const Desktop& desktop_;
    int socket_ = -1;
    std::unique_ptr<Child> process_;
    bool ready_ = false;
};

}  // namespace korvane::test

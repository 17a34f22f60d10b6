// A user's Calc: with a profile and settings of the test's own, on a desktop of
// the test's own.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "support/child.h"
#include "support/desktop.h"

namespace korvane::test {

class UserOffice {
public:
    // Why there can be none here; empty when there can.
    static std::string WhyNot();

    // `user`: who runs it, an ordinary user of the system; empty for the one who
    // runs the test.
    explicit UserOffice(std::string user = {});
    ~UserOffice();
    UserOffice(const UserOffice&) = delete;
    UserOffice& operator=(const UserOffice&) = delete;

    const std::filesystem::path& folder() const { return folder_; }
    std::filesystem::path profile() const { return folder_ / "config/libreoffice/4"; }
    // A copy of the sample workbook.
    std::filesystem::path Book(const std::string& name) const;

    struct Outcome {
        int code = -1;  // -1 when it did not end
        std::string said;
    };
    // Runs a command to its end, with the desktop.
    Outcome Run(const std::vector<std::string>& command) const;
    // Starts a command that becomes Calc.
    void Start(const std::vector<std::string>& command);
    // Ends what Start began.
    void Stop();

    // Whether a window of this title, a pattern, comes up.
    bool Shows(const std::string& title) const;
    // Whether Ctrl+Q in the window of this title brings the explorer's window.
    bool Explores(const std::string& title) const;
    // Whether the office that runs has the component in it.
    bool HasComponent() const;
    // How many offices run with the profile.
    int CountOffices() const;

private:
    std::vector<std::string> Command(const std::vector<std::string>& command) const;
    std::vector<std::string> OfficeIds() const;
    bool Waits(const std::function<bool()>& done) const;

    Desktop desktop_;
    std::string user_;
    std::filesystem::path folder_;
    std::unique_ptr<Child> office_;
};

}  // namespace korvane::test

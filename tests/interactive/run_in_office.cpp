// Starts an office with windows on a desktop of its own, runs a component's tests in
// it and ends as they end:
// run_in_office COMPONENT [test program's arguments]
#include <sys/wait.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <thread>

#include "support/desktop_office.h"

namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;
using korvane::test::Desktop;
using korvane::test::DesktopOffice;

constexpr int kSkipped = 77;  // what the test driver is told to take for "skipped"

int Run(const fs::path& folder, const std::string& component, const std::string& arguments) {
    const Desktop desktop;
    for (const char* name : {"tmp", "state"}) fs::create_directories(folder / name);
    DesktopOffice office(
        desktop, folder,
        {{component, "org.korvane.office.Addin", "korvane_tests", true, true},
         {component, "org.korvane.office.Commands", "korvane_tests_commands"}},
        {"--calc"},
        {"TMPDIR=" + (folder / "tmp").string(), "XDG_STATE_HOME=" + (folder / "state").string()});
    if (!office.ready()) {
        std::fprintf(stderr, "The office could not be started\n");
        return 1;
    }
    if (const auto answer = office.Ask("run" + arguments); answer != "started") {
        std::fprintf(stderr, "The tests could not be started: %s\n", answer.c_str());
        return 1;
    }
    // It answers nothing else until it has ended.
    while (office.Ask("ready") != "lost") std::this_thread::sleep_for(200ms);
    const int status = office.WaitForEnd();
    if (status >= 0 && WIFEXITED(status)) return WEXITSTATUS(status);
    std::fprintf(stderr, "The office died within the tests (status %d)\n", status);
    return 1;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return 2;
    if (const std::string why = DesktopOffice::WhyNot(); !why.empty()) {
        std::printf("Skipped: %s\n", why.c_str());
        return kSkipped;
    }
    std::string arguments;
    for (int k = 2; k < argc; ++k) arguments += " " + std::string(argv[k]);
    std::string name = (fs::temp_directory_path() / "korvane-tests-XXXXXX").string();
    if (::mkdtemp(name.data()) == nullptr) return 1;
    const int result = Run(name, fs::absolute(argv[1]).string(), arguments);
    std::error_code failed;
    fs::remove_all(name, failed);
    return result;
}

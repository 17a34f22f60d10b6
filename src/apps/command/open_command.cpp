#include "apps/command/open_command.h"

#include <unistd.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <sstream>
#include <system_error>
#include <thread>

#include "apps/command/document.h"
#include "apps/command/office_files.h"
#include "apps/command/open_profile.h"
#include "apps/command/open_running.h"
#include "apps/command/private_folder.h"
#include "apps/command/view_program.h"

namespace korvane::command {
namespace {

namespace fs = std::filesystem;
using namespace std::chrono_literals;

// An office that was started a moment ago has not loaded its components yet.
constexpr auto kStartTime = 5s;

bool IsSet(const char* name) {
    const char* const value = std::getenv(name);
    return value != nullptr && *value != '\0';
}

// As URLs: no name of a file can be taken for an option.
std::vector<std::string> UrlsOf(const std::vector<std::string>& books) {
    std::vector<std::string> urls;
    for (const std::string& book : books) {
        std::error_code failed;
        if (!fs::exists(book, failed)) throw CommandError(kNotFound, "no such file: " + book);
        if (!fs::is_regular_file(book, failed) || ::access(book.c_str(), R_OK) != 0)
            throw CommandError(kNotFound, "this file cannot be read: " + book);
        urls.push_back(FileUrl(fs::absolute(book).lexically_normal()));
    }
    return urls;
}

// What makes the office load the add-in, beside everything that it loads anyway:
// its own start-up settings with ours among them.
std::vector<std::string> AddinArguments(const fs::path& program) {
    FindView();
    const fs::path folder = FindComponent().parent_path() / "calc";
    std::error_code failed;
    if (!fs::exists(folder / "korvane.components", failed)) {
        throw CommandError(kHostLost, "The installation is incomplete: " + folder.string() +
                                          " is missing. Build or install korvane again.");
    }
    std::string services = StartupValue(program / "fundamentalrc", "URE_MORE_SERVICES");
    if (services.empty()) services = "<$ORIGIN/services>*";
    std::string layers;
    std::istringstream usual(StartupValue(program / "fundamentalrc", "CONFIGURATION_LAYERS"));
    const std::string ours = "xcsxcu:" + FileUrl(folder / "registry");
    bool isIn = false;
    for (std::string layer; usual >> layer;) {
        // The user's own settings come last, so that they count.
        if (layer.starts_with("user:")) {
            layers += ours + ' ';
            isIn = true;
        }
        layers += layer + ' ';
    }
    if (!isIn) {
        throw CommandError(kHostLost, "This LibreOffice cannot be started with the add-in: " +
                                          (program / "fundamentalrc").string() +
                                          " names no user's settings. Install the extension "
                                          "instead.");
    }
    layers.pop_back();
    return {"-env:URE_MORE_SERVICES=" + FileUrl(folder / "korvane.components") + " " + services,
            "-env:CONFIGURATION_LAYERS=" + layers};
}

// Only on X11, if need be behind Wayland, can the explorer's windows stay above
// the spreadsheet's: the two belong to different programs.
void PreferX11() {
    if (!IsSet("DISPLAY")) return;
    ::setenv("GDK_BACKEND", "x11", 0);
    ::setenv("QT_QPA_PLATFORM", "xcb", 0);
}

[[noreturn]] void Become(std::vector<std::string> command) {
    std::vector<char*> arguments;
    for (std::string& argument : command) arguments.push_back(argument.data());
    arguments.push_back(nullptr);
    std::fflush(stdout);
    ::execv(arguments[0], arguments.data());
    throw CommandError(kHostLost, "LibreOffice could not be started: " + command.front() + ": " +
                                      std::strerror(errno));
}

// Whether the office that runs with this profile, if any, is one with the add-in.
bool IsRunning(const fs::path& program, const fs::path& profile) {
    const auto until = std::chrono::steady_clock::now() + kStartTime;
    for (;;) {
        const auto running = FindRunning(program, profile);
        if (!running) return false;
        if (running->hasAddin) return true;
        if (std::chrono::steady_clock::now() > until) break;
        std::this_thread::sleep_for(100ms);
    }
    // Installed: it was not yet when that office started, or is switched off.
    throw CommandError(kHostLost,
                       std::string("LibreOffice is already running without Korvane Explorer. Close "
                                   "all its windows and try again") +
                           (HasExtension(program, profile)
                                ? ": the add-in is installed and comes with the next start."
                                : ", or install the extension: it is there whenever Calc starts."));
}

}  // namespace

void RunOpen(const OpenOptions& options) {
    auto urls = UrlsOf(options.books);
    if (!IsSet("DISPLAY") && !IsSet("WAYLAND_DISPLAY")) {
        throw CommandError(kHostLost,
                           "there is no desktop to show Calc on: neither DISPLAY nor "
                           "WAYLAND_DISPLAY is set");
    }
    const fs::path program = FindOffice();
    fs::path profile = UsualProfile(program, OwnVariables());
    const fs::path script = program / "soffice";
    // The script restarts an office that asks for it.
    std::vector<std::string> command = {
        (::access(script.c_str(), X_OK) == 0 ? script : program / "soffice.bin").string()};
    if (IsSet("KORVANE_PROFILE")) {
        profile = fs::absolute(std::getenv("KORVANE_PROFILE")).lexically_normal();
        command.push_back("-env:UserInstallation=" + FileUrl(profile));
    }
    if (!IsRunning(program, profile) && !HasExtension(program, profile)) {
        for (std::string& argument : AddinArguments(program)) command.push_back(argument);
    }
    if (urls.empty()) command.emplace_back("--calc");
    for (std::string& url : urls) command.push_back(std::move(url));
    PreferX11();
    Become(std::move(command));
}

}  // namespace korvane::command

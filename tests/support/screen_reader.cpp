#include "screen_reader.h"

#include <unistd.h>

#include <filesystem>
#include <thread>

namespace korvane::test {

std::string ScreenReader::WhyNot() {
    if (!HasProgram("dbus-daemon")) return "dbus-daemon is not installed";
    const std::string failure =
        OutputOf("/usr/bin/python3 -c 'import gi; gi.require_version(\"Atspi\", \"2.0\")' 2>&1");
    return failure.empty() ? "" : "Atspi for Python is not installed";
}

ScreenReader::ScreenReader(const Desktop& desktop)
    : desktop_(desktop),
      socket_((std::filesystem::temp_directory_path() /
               ("korvane-test-bus-" + std::to_string(::getpid())))
                  .string()) {
    bus_ = std::make_unique<Child>(std::vector<std::string>{"dbus-daemon", "--session", "--nofork",
                                                            "--address=unix:path=" + socket_},
                                   desktop.Environment());
    for (int tries = 0; tries < 100 && !std::filesystem::exists(socket_); ++tries) {
        std::this_thread::sleep_for(50ms);
    }
}

ScreenReader::~ScreenReader() {
    bus_.reset();
    ::unlink(socket_.c_str());
}

std::vector<std::string> ScreenReader::Environment() const {
    return {"DBUS_SESSION_BUS_ADDRESS=unix:path=" + socket_, "QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1"};
}

std::string ScreenReader::Read(const std::string& program, const std::string& arguments) const {
    return OutputOf("env " + Environment().front() + " " + desktop_.Environment().front() +
                    " timeout 30 /usr/bin/python3 " KORVANE_READER " " + program + " " + arguments +
                    " 2>&1");
}

}  // namespace korvane::test

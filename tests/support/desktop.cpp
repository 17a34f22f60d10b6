#include "support/desktop.h"

#include <poll.h>
#include <unistd.h>

#include <filesystem>
#include <thread>

namespace korvane::test {
namespace {

// The number of the display that the server chose.
std::string ReadLine(int file) {
    std::string line;
    pollfd wait{file, POLLIN, 0};
    for (char byte = 0; ::poll(&wait, 1, 20'000) > 0 && ::read(file, &byte, 1) == 1;) {
        if (byte == '\n') break;
        line += byte;
    }
    return line;
}

}  // namespace

std::string Desktop::WhyNot() {
    for (const char* program : {"Xvfb", "openbox", "xdotool", "import"}) {
        if (!HasProgram(program)) return std::string(program) + " is not installed";
    }
    return {};
}

Desktop::Desktop() {
    int ends[2] = {-1, -1};
    if (::pipe(ends) != 0) return;
    server_ =
        std::make_unique<Child>(std::vector<std::string>{"Xvfb", "-displayfd", "3", "-screen", "0",
                                                         "1280x1000x24", "-nolisten", "tcp"},
                                std::vector<std::string>{}, ends[1]);
    ::close(ends[1]);
    display_ = ":" + ReadLine(ends[0]);
    ::close(ends[0]);
    manager_ =
        std::make_unique<Child>(std::vector<std::string>{"openbox", "--sm-disable"}, Environment());
    std::this_thread::sleep_for(500ms);
}

std::vector<std::string> Desktop::Environment() const {
    return {"DISPLAY=" + display_, "QT_QPA_PLATFORM=xcb"};
}

std::string Desktop::Do(const std::string& arguments) const {
    return OutputOf("DISPLAY=" + display_ + " xdotool " + arguments);
}

std::string Desktop::Picture(const std::string& name) const {
    std::filesystem::create_directories(KORVANE_PICTURES);
    const std::string path = std::string(KORVANE_PICTURES) + "/" + name + ".png";
    OutputOf("DISPLAY=" + display_ + " import -window root " + path);
    return path;
}

}  // namespace korvane::test

#include "desk_office.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <fstream>
#include <thread>

#include "bindings/calc/desk/protocol_handler.h"

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

constexpr auto kPatience = 20s;
constexpr const char* kOffice = "/usr/lib/libreoffice/program";

constexpr const char* kComponents = R"(<?xml version="1.0" encoding="UTF-8"?>
<components xmlns="http://openoffice.org/2010/uno-components">
  <component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="file://@">
    <implementation name="org.korvane.office.Addin" constructor="korvane_desk_addin"
        single-instance="true">
      <service name="org.korvane.office.Addin"/>
      <singleton name="org.korvane.office.Addin"/>
    </implementation>
    <implementation name="org.korvane.office.Commands" constructor="korvane_desk_commands">
      <service name="org.korvane.office.Commands"/>
    </implementation>
  </component>
</components>
)";

constexpr const char* kJobs = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Jobs" oor:package="org.openoffice.Office">
  <node oor:name="Jobs">
    <node oor:name="Korvane" oor:op="replace">
      <prop oor:name="Service"><value>org.korvane.office.Addin</value></prop>
    </node>
  </node>
  <node oor:name="Events">
    <node oor:name="OnStartApp" oor:op="fuse">
      <node oor:name="JobList">
        <node oor:name="Korvane" oor:op="replace"/>
      </node>
    </node>
  </node>
</oor:component-data>
)";

// Nothing that stands in front of the sheet.
constexpr const char* kCommon = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Common" oor:package="org.openoffice.Office">
  <node oor:name="Misc">
    <prop oor:name="FirstRun"><value>false</value></prop>
    <prop oor:name="ShowTipOfTheDay"><value>false</value></prop>
    <prop oor:name="UseOpenCL"><value>false</value></prop>
  </node>
</oor:component-data>
)";

std::string OfficeBuild() {
    std::ifstream in(std::string(kOffice) + "/versionrc");
    const std::string key = "buildid=";
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(key)) return line.substr(key.size());
    }
    return {};
}

void Write(const fs::path& path, std::string text, const std::string& with = {}) {
    fs::create_directories(path.parent_path());
    if (const auto at = text.find('@'); at != std::string::npos && !with.empty()) {
        text.replace(at, 1, with);
    }
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

std::string DeskOffice::WhyNot() {
    if (!fs::exists(std::string(kOffice) + "/libvclplug_genlo.so")) {
        return "the office cannot draw on an X server here";
    }
    return Desktop::WhyNot();
}

DeskOffice::DeskOffice(const Desktop& desktop, const fs::path& folder) {
    Write(folder / "desk.components", kComponents, KORVANE_DESK_COMPONENT);
    const fs::path data = folder / "config/data/org/openoffice/Office";
    Write(data / "Jobs.xcu", kJobs);
    Write(data / "Common.xcu", kCommon);
    Write(data / "ProtocolHandler.xcu", calc::kProtocolHandlerConfiguration);
    const std::string profile = "file://" + (folder / "profile").string();
    const std::vector<std::string> command = {
        std::string(kOffice) + "/soffice.bin",
        "--norestore",
        "--nologo",
        "--nolockcheck",
        "--nofirststartwizard",
        "--calc",
        "-env:UserInstallation=" + profile,
        "-env:URE_MORE_SERVICES=file://" + (folder / "desk.components").string() + " <file://" +
            kOffice + "/services>*",
        "-env:CONFIGURATION_LAYERS=xcsxcu:${BRAND_BASE_DIR}/share/registry "
        "res:${BRAND_BASE_DIR}/share/registry xcsxcu:file://" +
            (folder / "config").string() + " user:!" + profile + "/user/registrymodifications.xcu"};
    // A profile without this mark is taken for one of another version: the first
    // start would only clean it up, end, and want to be started again.
    Write(folder / "profile/user/extensions/buildid", OfficeBuild());
    Start(command, desktop);
    ready_ = AskUntil("ready", [](const std::string& answer) {
                 return answer == "yes" || answer == "lost";
             }) == "yes";
    if (ready_) Focus(desktop);
}

DeskOffice::~DeskOffice() {
    // The component ends the office when the socket closes.
    if (socket_ >= 0) ::close(socket_);
    if (process_) process_->WaitForEnd(5s);
}

void DeskOffice::Start(const std::vector<std::string>& command, const Desktop& desktop) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    if (socket_ >= 0) ::close(socket_);
    socket_ = ends[0];
    auto environment = desktop.Environment();
    for (const char* entry : {"SAL_USE_VCLPLUGIN=gen", "SAL_DISABLE_OPENCL=1", "LC_ALL=C.UTF-8"}) {
        environment.emplace_back(entry);
    }
    process_ = std::make_unique<Child>(command, environment, ends[1]);
    ::close(ends[1]);
}

// Keys go to the window that has the focus.
void DeskOffice::Focus(const Desktop& desktop) {
    const auto until = std::chrono::steady_clock::now() + kPatience;
    while (std::chrono::steady_clock::now() < until) {
        desktop.Do(
            "search --onlyvisible --name 'LibreOffice Calc' windowactivate --sync "
            "2>/dev/null");
        if (desktop.Do("getactivewindow getwindowname 2>/dev/null").find("LibreOffice Calc") !=
            std::string::npos) {
            return;
        }
        std::this_thread::sleep_for(50ms);
    }
    ready_ = false;
}

std::string DeskOffice::Ask(const std::string& order) {
    const std::string line = order + "\n";
    if (::send(socket_, line.data(), line.size(), MSG_NOSIGNAL) < 0) return "lost";
    std::string answer;
    pollfd wait{socket_, POLLIN, 0};
    for (char byte = 0;;) {
        if (::poll(&wait, 1, 30'000) <= 0) return "no answer";
        if (::recv(socket_, &byte, 1, 0) != 1) return "lost";
        if (byte == '\n') return answer;
        answer += byte;
    }
}

std::string DeskOffice::AskUntil(const std::string& order,
                                 const std::function<bool(const std::string&)>& good) {
    const auto until = std::chrono::steady_clock::now() + kPatience;
    for (;;) {
        std::string answer = Ask(order);
        if (good(answer) || std::chrono::steady_clock::now() > until) return answer;
        std::this_thread::sleep_for(20ms);
    }
}

std::string DeskOffice::Log(const std::string& wanted) {
    std::string log;
    AskUntil("log", [&](const std::string& answer) {
        log += answer;
        return log.find(wanted) != std::string::npos;
    });
    return log;
}

int DeskOffice::WaitForEnd() { return process_->WaitForEnd(kPatience).value_or(-1); }

}  // namespace korvane::test

#include "desktop_office.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <algorithm>
#include <cstdlib>
#include <fstream>
#include <thread>

#include "bindings/calc/desk/protocol_handler.h"

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

constexpr auto kPatience = 25s;
constexpr const char* kOffice = "/usr/lib/libreoffice/program";

// What the office draws with: its own plain toolkit is there wherever the office is.
std::string Toolkit() {
    const char* const wanted = std::getenv("KORVANE_OFFICE_TOOLKIT");
    return wanted != nullptr && *wanted != '\0' ? wanted : "gen";
}

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

std::string Components(const std::vector<OfficePart>& parts) {
    std::string text =
        "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
        "<components xmlns=\"http://openoffice.org/2010/uno-components\">\n";
    for (const OfficePart& part : parts) {
        text +=
            "<component loader=\"com.sun.star.loader.SharedLibrary\" environment=\"gcc3\" "
            "uri=\"file://" +
            part.library + "\"><implementation name=\"" + part.implementation +
            "\" constructor=\"" + part.constructor + "\"" +
            (part.singleton ? " single-instance=\"true\">" : ">") + "<service name=\"" +
            part.implementation + "\"/>" +
            (part.singleton ? "<singleton name=\"" + part.implementation + "\"/>" : "") +
            "</implementation></component>\n";
    }
    return text + "</components>\n";
}

std::string Jobs(const std::vector<OfficePart>& parts) {
    std::string jobs, list;
    for (const OfficePart& part : parts) {
        if (!part.isStarted) continue;
        const std::string node =
            "<node oor:name=\"" + part.implementation + "\" oor:op=\"replace\"";
        jobs += node + "><prop oor:name=\"Service\"><value>" + part.implementation +
                "</value></prop></node>\n";
        list += node + "/>\n";
    }
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Jobs" oor:package="org.openoffice.Office">
<node oor:name="Jobs">
)" + jobs +
           R"(</node>
<node oor:name="Events"><node oor:name="OnStartApp" oor:op="fuse"><node oor:name="JobList">
)" + list +
           R"(</node></node></node>
</oor:component-data>
)";
}

std::string OfficeBuild() {
    std::ifstream in(std::string(kOffice) + "/versionrc");
    const std::string key = "buildid=";
    for (std::string line; std::getline(in, line);) {
        if (line.starts_with(key)) return line.substr(key.size());
    }
    return {};
}

void Write(const fs::path& path, const std::string& text) {
    fs::create_directories(path.parent_path());
    std::ofstream(path, std::ios::binary) << text;
}

}  // namespace

std::string DesktopOffice::WhyNot() {
    if (!fs::exists(std::string(kOffice) + "/libvclplug_" + Toolkit() + "lo.so")) {
        return "the office cannot draw with " + Toolkit() + " on an X server here";
    }
    return Desktop::WhyNot();
}

DesktopOffice::DesktopOffice(const Desktop& desktop, const fs::path& folder,
                             const std::vector<OfficePart>& parts,
                             const std::vector<std::string>& arguments,
                             const std::vector<std::string>& environment)
    : desktop_(desktop) {
    Write(folder / "parts.components", Components(parts));
    const fs::path data = folder / "layer/data/org/openoffice/Office";
    Write(data / "Jobs.xcu", Jobs(parts));
    Write(data / "Common.xcu", kCommon);
    Write(data / "ProtocolHandler.xcu", calc::kProtocolHandlerConfiguration);
    // A profile without this mark is taken for one of another version: the first
    // start would only clean it up, end, and want to be started again.
    Write(folder / "profile/user/extensions/buildid", OfficeBuild());
    const std::string profile = "file://" + (folder / "profile").string();
    std::vector<std::string> command = {
        std::string(kOffice) + "/soffice.bin",
        "--nologo",
        "--nolockcheck",
        "--nofirststartwizard",
        "-env:UserInstallation=" + profile,
        "-env:URE_MORE_SERVICES=file://" + (folder / "parts.components").string() + " <file://" +
            kOffice + "/services>*",
        "-env:CONFIGURATION_LAYERS=xcsxcu:${BRAND_BASE_DIR}/share/registry "
        "res:${BRAND_BASE_DIR}/share/registry xcsxcu:file://" +
            (folder / "layer").string() + " user:!" + profile + "/user/registrymodifications.xcu"};
    if (std::find(environment.begin(), environment.end(), kRecovers) == environment.end()) {
        command.emplace_back("--norestore");
    }
    command.insert(command.end(), arguments.begin(), arguments.end());
    Start(command, environment);
    const auto known = [](const std::string& answer) { return answer != "no"; };
    ready_ = AskUntil("ready", known) == "yes";
}

DesktopOffice::~DesktopOffice() {
    // The part that listens ends the office when the socket closes.
    if (socket_ >= 0) ::close(socket_);
    if (process_) process_->WaitForEnd(5s);
}

void DesktopOffice::Start(const std::vector<std::string>& command,
                          const std::vector<std::string>& environment) {
    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    socket_ = ends[0];
    auto all = desktop_.Environment();
    for (const char* entry : {"SAL_DISABLE_OPENCL=1", "LC_ALL=C.UTF-8"}) all.emplace_back(entry);
    all.push_back("SAL_USE_VCLPLUGIN=" + Toolkit());
    all.insert(all.end(), environment.begin(), environment.end());
    process_ = std::make_unique<Child>(command, all, ends[1]);
    ::close(ends[1]);
}

bool DesktopOffice::Until(const std::function<bool()>& good) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!good()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(30ms);
    }
    return true;
}

bool DesktopOffice::Focus(const std::string& title) {
    return Until([&] {
        desktop_.Do("search --onlyvisible --name '^" + title +
                    ".* - LibreOffice Calc' windowactivate --sync 2>/dev/null");
        return desktop_.Do("getactivewindow getwindowname 2>/dev/null").starts_with(title);
    });
}

std::string DesktopOffice::Ask(const std::string& order) {
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

std::string DesktopOffice::AskUntil(const std::string& order,
                                    const std::function<bool(const std::string&)>& good) {
    std::string answer;
    Until([&] { return good(answer = Ask(order)) || answer == "lost"; });
    return answer;
}

int DesktopOffice::WaitForEnd() { return process_->WaitForEnd(kPatience).value_or(-1); }

}  // namespace korvane::test

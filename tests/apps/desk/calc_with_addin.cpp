#include "calc_with_addin.h"

#include <poll.h>
#include <sys/socket.h>
#include <unistd.h>

#include <fstream>
#include <sstream>
#include <thread>

#include "bindings/calc/desk/protocol_handler.h"

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

constexpr auto kPatience = 25s;
constexpr const char* kOffice = "/usr/lib/libreoffice/program";

constexpr const char* kComponents = R"(<?xml version="1.0" encoding="UTF-8"?>
<components xmlns="http://openoffice.org/2010/uno-components">
  <component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="file://@">
    <implementation name="org.korvane.office.Addin" constructor="korvane_office_addin"
        single-instance="true">
      <singleton name="org.korvane.office.Addin"/>
    </implementation>
    <implementation name="org.korvane.office.AddinJob" constructor="korvane_office_addin_job">
      <service name="org.korvane.office.AddinJob"/>
    </implementation>
    <implementation name="org.korvane.office.Commands" constructor="korvane_office_commands">
      <service name="org.korvane.office.Commands"/>
    </implementation>
  </component>
  <component loader="com.sun.star.loader.SharedLibrary" environment="gcc3" uri="file://@">
    <implementation name="org.korvane.test.Probe" constructor="korvane_test_probe">
      <service name="org.korvane.test.Probe"/>
    </implementation>
  </component>
</components>
)";

constexpr const char* kJobs = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="Jobs" oor:package="org.openoffice.Office">
  <node oor:name="Jobs">
    <node oor:name="Korvane" oor:op="replace">
      <prop oor:name="Service"><value>org.korvane.office.AddinJob</value></prop>
    </node>
    <node oor:name="Probe" oor:op="replace">
      <prop oor:name="Service"><value>org.korvane.test.Probe</value></prop>
    </node>
  </node>
  <node oor:name="Events">
    <node oor:name="OnStartApp" oor:op="fuse">
      <node oor:name="JobList">
        <node oor:name="Korvane" oor:op="replace"/>
        <node oor:name="Probe" oor:op="replace"/>
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

void Write(const fs::path& path, std::string text, const std::vector<std::string>& with = {}) {
    fs::create_directories(path.parent_path());
    for (const std::string& one : with) text.replace(text.find('@'), 1, one);
    std::ofstream(path, std::ios::binary) << text;
}

// Until `good`, or for a while.
template <class Good>
bool Until(Good&& good) {
    const auto end = std::chrono::steady_clock::now() + kPatience;
    while (!good()) {
        if (std::chrono::steady_clock::now() > end) return false;
        std::this_thread::sleep_for(30ms);
    }
    return true;
}

}  // namespace

std::string CalcWithAddin::WhyNot() {
    if (!fs::exists(std::string(kOffice) + "/libvclplug_genlo.so")) {
        return "the office cannot draw on an X server here";
    }
    return Desktop::WhyNot();
}

CalcWithAddin::CalcWithAddin(const Desktop& desktop, const fs::path& folder, const fs::path& book)
    : desktop_(desktop) {
    Write(folder / "desk.components", kComponents, {KORVANE_COMPONENT, KORVANE_PROBE});
    const fs::path data = folder / "layer/data/org/openoffice/Office";
    Write(data / "Jobs.xcu", kJobs);
    Write(data / "Common.xcu", kCommon);
    Write(data / "ProtocolHandler.xcu", calc::kProtocolHandlerConfiguration);
    // A profile without this mark is taken for one of another version: the first
    // start would only clean it up, end, and want to be started again.
    Write(folder / "profile/user/extensions/buildid", OfficeBuild());
    const std::string profile = "file://" + (folder / "profile").string();
    const std::vector<std::string> command = {
        std::string(kOffice) + "/soffice.bin",
        "--norestore",
        "--nologo",
        "--nolockcheck",
        "--nofirststartwizard",
        "-env:UserInstallation=" + profile,
        "-env:URE_MORE_SERVICES=file://" + (folder / "desk.components").string() + " <file://" +
            kOffice + "/services>*",
        "-env:CONFIGURATION_LAYERS=xcsxcu:${BRAND_BASE_DIR}/share/registry "
        "res:${BRAND_BASE_DIR}/share/registry xcsxcu:file://" +
            (folder / "layer").string() + " user:!" + profile + "/user/registrymodifications.xcu",
        book.string()};

    int ends[2];
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) return;
    socket_ = ends[0];
    auto environment = desktop.Environment();
    for (const std::string& entry :
         {std::string("SAL_USE_VCLPLUGIN=gen"), std::string("SAL_DISABLE_OPENCL=1"),
          std::string("LC_ALL=C.UTF-8"), std::string("KORVANE_VIEW=") + KORVANE_VIEW,
          "XDG_CONFIG_HOME=" + (folder / "config").string(),
          "XDG_STATE_HOME=" + (folder / "state").string()}) {
        environment.push_back(entry);
    }
    process_ = std::make_unique<Child>(command, environment, ends[1]);
    ::close(ends[1]);
    // The add-in starts when a spreadsheet's window has the keyboard.
    const auto known = [](const std::string& answer) { return answer != "no"; };
    ready_ = AskUntil("ready", known) == "yes" && Focus(book.filename().string()) &&
             AskUntil("addin", known) == "yes";
}

CalcWithAddin::~CalcWithAddin() {
    // The probe ends the office when the socket closes.
    if (socket_ >= 0) ::close(socket_);
    if (process_) process_->WaitForEnd(5s);
}

bool CalcWithAddin::Focus(const std::string& book) {
    return Until([&] {
        desktop_.Do("search --onlyvisible --name '^" + book +
                    " - LibreOffice Calc' windowactivate --sync 2>/dev/null");
        return desktop_.Do("getactivewindow getwindowname 2>/dev/null").starts_with(book);
    });
}

std::string CalcWithAddin::Ask(const std::string& order) {
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

std::string CalcWithAddin::AskUntil(const std::string& order,
                                    const std::function<bool(const std::string&)>& good) {
    std::string answer;
    Until([&] { return good(answer = Ask(order)) || answer == "lost"; });
    return answer;
}

int CalcWithAddin::WaitForEnd() { return process_->WaitForEnd(kPatience).value_or(-1); }

std::vector<pid_t> CalcWithAddin::Views() const {
    std::vector<pid_t> views;
    std::istringstream ids(OutputOf("pgrep -x korvane-view -P " + std::to_string(process_->id())));
    for (pid_t id = 0; ids >> id;) views.push_back(id);
    return views;
}

int CalcWithAddin::Windows(const std::string& title, int count) const {
    int found = 0;
    Until([&] {
        std::istringstream ids(
            desktop_.Do("search --onlyvisible --name '^" + title + "$' 2>/dev/null"));
        found = 0;
        for (std::string id; ids >> id;) ++found;
        return found == count;
    });
    return found;
}

}  // namespace korvane::test

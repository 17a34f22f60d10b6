#include "user_office.h"

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <thread>

#include "apps/command/open_running.h"

namespace korvane::test {

namespace fs = std::filesystem;

namespace {

constexpr const char* kOffice = "/usr/lib/libreoffice/program";

// No tip in front of the sheet, and no end of the office on Ctrl+Q: so the key can
// be pressed until the add-in is there.
constexpr const char* kSettings = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema"
    xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="ShowTipOfTheDay" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Common/Misc"><prop oor:name="FirstRun" oor:op="fuse"><value>false</value></prop></item>
<item oor:path="/org.openoffice.Office.Accelerators/PrimaryKeys/Global"><node oor:name="Q_MOD1" oor:op="remove"/></item>
</oor:items>
)";

}  // namespace

std::string UserOffice::WhyNot() {
    if (!fs::exists(std::string(kOffice) + "/libvclplug_genlo.so"))
        return "the office cannot draw on an X server here";
    return Desktop::WhyNot();
}

UserOffice::UserOffice(std::string user) : user_(std::move(user)) {
    std::string pattern = (fs::temp_directory_path() / "korvane-open-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) return;
    folder_ = pattern;
    fs::create_directories(profile() / "user");
    std::ofstream(profile() / "user/registrymodifications.xcu") << kSettings;
    if (!user_.empty()) OutputOf("chown -R " + user_ + ": " + folder_.string());
}

UserOffice::~UserOffice() {
    Stop();
    std::error_code ignored;
    fs::remove_all(folder_, ignored);
}

fs::path UserOffice::Book(const std::string& name) const {
    const fs::path book = folder_ / name;
    fs::copy_file(std::string(KORVANE_SOURCE) + "/examples/loan.xlsx", book,
                  fs::copy_options::overwrite_existing);
    fs::permissions(book, fs::perms::all);
    return book;
}

std::vector<std::string> UserOffice::Command(const std::vector<std::string>& command) const {
    std::vector<std::string> all;
    if (!user_.empty()) all = {"runuser", "-u", user_, "--"};
    all.insert(all.end(),
               {"env", "-u", "WAYLAND_DISPLAY", "-u", "KORVANE_PROFILE", "-u", "QT_QPA_PLATFORM",
                "HOME=" + folder_.string(), "XDG_CONFIG_HOME=" + (folder_ / "config").string(),
                "XDG_STATE_HOME=" + (folder_ / "state").string(), "TMPDIR=" + folder_.string(),
                "SAL_USE_VCLPLUGIN=gen", "SAL_DISABLE_OPENCL=1", "LC_ALL=C.UTF-8"});
    all.push_back(desktop_.Environment().front());
    all.insert(all.end(), command.begin(), command.end());
    return all;
}

UserOffice::Outcome UserOffice::Run(const std::vector<std::string>& command) const {
    const fs::path said = folder_ / "said";
    std::vector<std::string> all = {"sh", "-c", "said=$1; shift; exec \"$@\" >\"$said\" 2>&1", "sh",
                                    said.string()};
    for (std::string& part : Command(command)) all.push_back(std::move(part));
    Child child(all);
    Outcome outcome;
    const auto status = child.WaitForEnd(60s);
    if (status && WIFEXITED(*status)) outcome.code = WEXITSTATUS(*status);
    std::ifstream in(said);
    outcome.said.assign(std::istreambuf_iterator<char>(in), {});
    return outcome;
}

void UserOffice::Start(const std::vector<std::string>& command) {
    office_ = std::make_unique<Child>(Command(command));
}

void UserOffice::Stop() {
    if (!office_) return;
    for (const std::string& id : OfficeIds()) ::kill(static_cast<pid_t>(std::stol(id)), SIGKILL);
    office_->WaitForEnd(10s);
    office_.reset();
}

// By the environment: every process that was started with our folder.
std::vector<std::string> UserOffice::OfficeIds() const {
    std::vector<std::string> ids;
    std::error_code failed;
    for (const auto& entry : fs::directory_iterator("/proc", failed)) {
        std::error_code gone;
        if (fs::read_symlink(entry.path() / "exe", gone).filename() != "soffice.bin") continue;
        std::ifstream in(entry.path() / "environ", std::ios::binary);
        const std::string all((std::istreambuf_iterator<char>(in)), {});
        if (all.find("HOME=" + folder_.string() + '\0') != std::string::npos)
            ids.push_back(entry.path().filename());
    }
    return ids;
}

int UserOffice::CountOffices() const { return static_cast<int>(OfficeIds().size()); }

bool UserOffice::HasComponent() const {
    for (const std::string& id : OfficeIds()) {
        std::ifstream in("/proc/" + id + "/maps");
        const std::string maps((std::istreambuf_iterator<char>(in)), {});
        if (maps.find("libkorvane-office.so") != std::string::npos) return true;
    }
    return false;
}

bool UserOffice::Waits(const std::function<bool()>& done) const {
    const auto until = std::chrono::steady_clock::now() + 60s;
    while (!done()) {
        if (std::chrono::steady_clock::now() > until) return false;
        std::this_thread::sleep_for(200ms);
    }
    return true;
}

bool UserOffice::Shows(const std::string& title) const {
    return Waits([&] {
        return !desktop_.Do("search --onlyvisible --name '" + title + "' 2>/dev/null").empty();
    });
}

bool UserOffice::Explores(const std::string& title) const {
    return Waits([&] {
        const std::string search = "search --onlyvisible --name '";
        if (!desktop_.Do(search + "^Korvane Explorer$' 2>/dev/null").empty()) return true;
        desktop_.Do(search + title + "' windowactivate 2>/dev/null");
        const std::string active = desktop_.Do("getactivewindow getwindowname 2>/dev/null");
        if (active.find("LibreOffice Calc") != std::string::npos) desktop_.Do("key ctrl+q");
        return false;
    });
}

}  // namespace korvane::test

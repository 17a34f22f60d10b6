#include "host/addin/update_check.h"

#include <chrono>
#include <optional>
#include <string>

#include "base/attempt.h"
#include "base/number.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "settings/store_names.h"

namespace korvane {
namespace {

using platform::MessageAnswer;
using platform::MessageButtons;
using platform::MessageIcon;

constexpr const char16_t* kSetting = u"UpdateCheck";
constexpr const char16_t* kVersionFile = u"/kvversion.txt";
constexpr const char16_t* kDownloadPage = u"/explorer/download";
constexpr std::chrono::seconds kTimeout{10};
constexpr double kDaysBetween = 2;
constexpr double kMoreDaysAfterNo = 3;

MessageAnswer Tell(SharedState& state, const std::u16string& text, MessageIcon icon,
                   MessageButtons buttons = MessageButtons::kOK) {
    return state.platform.messageBoxes.Show({text, platform::kProductName, icon, buttons});
}

// The host paints while the user is asked, and then as before.
class ScreenShown {
public:
    explicit ScreenShown(host::Application& application)
        : application_(application), before_(application.ScreenUpdating()) {
        application_.SetScreenUpdating(true);
    }
    ScreenShown(const ScreenShown&) = delete;
    ScreenShown& operator=(const ScreenShown&) = delete;
    ~ScreenShown() {
        Suppressed([this] { application_.SetScreenUpdating(before_); });
    }

private:
    host::Application& application_;
    bool before_;
};

bool bIsDue(SharedState& state, double today) {
    const auto next =
        ParseNumber(state.platform.settings.Get(kApplication, kSection, kSetting, u""));
    return !next || *next <= today;
}

// The published text; empty without a server, or when it cannot be read.
std::u16string sFetchVersion(SharedState& state) {
    const std::u16string& server = state.platform.links.updateServer;
    std::u16string text;
    if (!server.empty()) {
        Suppressed([&] { text = state.platform.urls.Read(server + kVersionFile, kTimeout); });
    }
    const auto first = text.find_first_not_of(u" \t\r\n");
    if (first == std::u16string::npos) return {};
    return text.substr(first, text.find_last_not_of(u" \t\r\n") - first + 1);
}

std::u16string sRunningVersion(const SharedState& state) {
    const platform::ProductVersion& version = state.platform.version;
    return NumberText(version.major) + u"." + NumberText(version.minor);
}

// Asks about a newer version. Whether the user declined it.
bool bDeclined(SharedState& state, const std::u16string& published) {
    const auto answer =
        Tell(state,
             u"A new version of Korvane Explorer (" + published +
                 u") is available for download.\nWould you like to visit the website to "
                 u"download it?",
             MessageIcon::kQuestion, MessageButtons::kYesNo);
    if (answer != MessageAnswer::kYes) return true;
    state.platform.shell.Open(state.platform.links.webSite + kDownloadPage,
                              state.application->Hwnd());
    return false;
}

// Tells what comparing the versions gave. How many days later the next check is.
double dCompare(SharedState& state, const std::u16string& published, bool bManual) {
    const std::u16string running = sRunningVersion(state);
    const bool newer = ParseNumber(running).value_or(0) < ParseNumber(published).value_or(0);
    if (!newer && !bManual) return 0;
    const ScreenShown shown(*state.application);
    if (newer) return bDeclined(state, published) ? kMoreDaysAfterNo : 0;
    Tell(state, u"Your version of Korvane Explorer (" + running + u") is up to date.",
         MessageIcon::kInformation);
    return 0;
}

void CheckUpdates(SharedState& state, bool bManual) {
    const double today = platform::DateSerial(state.platform.clock.Now());
    if (!bManual && !bIsDue(state, today)) return;
    const std::u16string published = sFetchVersion(state);
    std::u16string failure;
    double more = 0;
    if (published.empty()) {
        failure = u"Cannot connect to the web server.";
    } else if (!IsNumeric(published)) {
        failure = u"Error while retrieving the version information from the web server.";
    } else {
        more = dCompare(state, published, bManual);
    }
    state.platform.settings.Save(kApplication, kSection, kSetting,
                                 NumberText(today + kDaysBetween + more));
    if (bManual && !failure.empty()) Tell(state, failure, MessageIcon::kCritical);
}

}  // namespace

void EP_CheckUpdates(SharedState& state, bool bManual) {
    if (!state.IsRunning()) return;
    AtEntryPoint(state.errors, u"MEntryPoints", u"EP_CheckUpdates",
                 [&] { CheckUpdates(state, bManual); });
}

}  // namespace korvane

#include "help/help.h"

#include "base/number.h"
#include "host/addin/shared_state.h"

namespace korvane::MHelp {

void ShowHelp(SharedState& state, std::int32_t topic) {
    platform::Platform& platform = state.platform;
    const std::u16string& path = state.helpFile;
    if (!platform.files.Exists(path)) {
        platform.messageBoxes.Show({u"Cannot not open the help file:\n\n" + path,
                                    platform::kProductName, platform::MessageIcon::kCritical,
                                    platform::MessageButtons::kOK});
        return;
    }
    std::u16string arguments;
    if (topic >= 1) arguments = u"-mapid " + NumberText(topic) + u" ";
    platform.shell.Start(u"hh.exe " + arguments + path);
}

}  // namespace korvane::MHelp

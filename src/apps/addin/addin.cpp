#include "apps/addin/addin.h"

#include "explorer/explorer.h"
#include "help/about.h"
#include "help/help.h"
#include "host/addin/update_check.h"
#include "settings/options_dialog.h"

namespace korvane {

std::shared_ptr<ExplorerWindow> Addin::AddinWindows::NewExplorer() {
    return std::make_shared<FExplorer>(addin_.state_, addin_.commands_);
}

std::shared_ptr<CommandWindow> Addin::AddinWindows::NewOptions() {
    return std::make_shared<FOptions>(addin_.state_);
}

std::shared_ptr<CommandWindow> Addin::AddinWindows::NewAbout() {
    return std::make_shared<FAbout>(addin_.state_,
                                    [this] { EP_CheckUpdates(addin_.state_, true); });
}

void Addin::AddinWindows::ShowHelp(std::int32_t topic) { MHelp::ShowHelp(addin_.state_, topic); }

void Addin::AddinWindows::CheckUpdates(bool bManual) { EP_CheckUpdates(addin_.state_, bManual); }

}  // namespace korvane

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

void Addin::AskedCommands::EP_Explore(std::int64_t hwndParent) {
    if (May(Kind::kCells)) addin_.entryPoints_.EP_Explore(hwndParent);
}

void Addin::AskedCommands::EP_GoBack() {
    if (May(Kind::kCells)) addin_.entryPoints_.EP_GoBack();
}

void Addin::AskedCommands::EP_Options() {
    if (May(Kind::kWindow)) addin_.entryPoints_.EP_Options();
}

void Addin::AskedCommands::ShowHelp(std::int32_t topic) {
    if (May(Kind::kHelp)) addin_.entryPoints_.ShowHelp(topic);
}

void Addin::AskedCommands::ShowAbout() {
    if (May(Kind::kWindow)) addin_.entryPoints_.ShowAbout();
}

void Addin::AddinWindows::ShowHelp(std::int32_t topic) { MHelp::ShowHelp(addin_.state_, topic); }

void Addin::AddinWindows::CheckUpdates(bool bManual) { EP_CheckUpdates(addin_.state_, bManual); }

}  // namespace korvane

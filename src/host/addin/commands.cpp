#include "host/addin/commands.h"

#include "base/text.h"

namespace korvane {

void Dispatch(Commands& commands, std::u16string_view sIdentifier) {
    if (sIdentifier == kExploreCommand) {
        commands.EP_Explore(0);
    } else if (sIdentifier == kBackCommand) {
        commands.EP_GoBack();
    } else if (sIdentifier == kOptionsCommand) {
        commands.EP_Options();
    } else if (sIdentifier == kDocumentationCommand) {
        commands.ShowHelp(0);
    } else if (sIdentifier == kAboutCommand) {
        commands.ShowAbout();
    }
}

std::u16string sCommandOfRibbonId(const std::u16string& sId) {
    constexpr std::u16string_view kRibbonPrefix = u"kvx2";
    if (!StartsWith(sId, kRibbonPrefix)) return sId;
    return u"kvx" + sId.substr(kRibbonPrefix.size());
}

}  // namespace korvane

// The commands that menus, buttons, the ribbon and shortcuts stand for.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace korvane {

// What each command starts. Members are entry points: they report their own
// failures and never raise.
class Commands {
public:
    virtual ~Commands() = default;
    // Explores the selected cell in a new window, opened from the window
    // `hwndParent` (0: from the host).
    virtual void EP_Explore(std::int64_t hwndParent) = 0;
    // Goes back to the cell explored before.
    virtual void EP_GoBack() = 0;
    // Opens the settings dialog.
    virtual void EP_Options() = 0;
    // Opens the help file at a topic of its map; 0 for its start page.
    virtual void ShowHelp(std::int32_t topic) = 0;
    // Shows the about box.
    virtual void ShowAbout() = 0;
};

// The identifiers that controls carry.
inline constexpr const char16_t* kExploreCommand = u"kvxExplore";
inline constexpr const char16_t* kBackCommand = u"kvxBack";
inline constexpr const char16_t* kOptionsCommand = u"kvxOptions";
inline constexpr const char16_t* kDocumentationCommand = u"kvxDocumentation";
inline constexpr const char16_t* kAboutCommand = u"kvxAbout";

// Runs the command with this identifier; any other text is ignored.
void Dispatch(Commands& commands, std::u16string_view sIdentifier);

// The command identifier of a ribbon control: "kvx2Explore" becomes
// "kvxExplore"; what does not begin with exactly "kvx2" stays as it is.
std::u16string sCommandOfRibbonId(const std::u16string& sId);

}  // namespace korvane

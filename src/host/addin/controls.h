// The system's menu and toolbar buttons, in hosts without a ribbon.
#pragma once

namespace korvane {

struct SharedState;

// On every control that the system adds.
inline constexpr const char16_t* kButtonTag = u"kvxButton";

// In a host with a ribbon none of these does anything.
namespace MControls {

// Builds the submenu in the Tools menu and, when the user wants the icon, the
// explore buttons on the formula-auditing toolbar and in that menu's auditing
// submenu; earlier ones are replaced, and clicks on the new ones are heard. True
// on success. After a failure, which is reported, nothing that was added stays.
bool bBuildCommandBars(SharedState& state);

// Remove the explore buttons; those and the submenu. What is not there, or
// cannot be removed, is passed over.
void RemoveToolbarButtons(SharedState& state);
void RemoveAll(SharedState& state);

}  // namespace MControls
}  // namespace korvane

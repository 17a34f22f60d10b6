// The explorer window's designed layout.
#pragma once

#include "platform/window/design.h"

namespace korvane {

// The controls' names.
namespace explorer_controls {
inline constexpr const char16_t* kTreeFrame = u"shpBox";
inline constexpr const char16_t* kTree = u"trvTree";
inline constexpr const char16_t* kSplitter = u"lblSplitterBar";
inline constexpr const char16_t* kFormula = u"rtbFormula";
inline constexpr const char16_t* kEveryFunction = u"chkEveryFunction";
inline constexpr const char16_t* kPrecise = u"chkPrecise";
inline constexpr const char16_t* kClose = u"cmdCancel";
}  // namespace explorer_controls

// The tree takes what the window grows by; the formula keeps its height until
// the splitter between them is dragged; check boxes and button stay at the
// bottom.
const platform::FormDesign& ExplorerDesign();

}  // namespace korvane

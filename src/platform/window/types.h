// The plain data that windows are made of.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <variant>
#include <vector>

#include "platform/screen.h"

namespace korvane::platform {

// A window of the system. Numbers begin at 1 and are not used again.
using WindowId = std::int32_t;
// A control of a window: its place in the window's design, from 1. 0 is the
// window itself.
using ControlId = std::int32_t;
inline constexpr ControlId kFormItself = 0;

// Handles of the system's own windows lie above any that a window system gives,
// so that one number can stand for a window of either kind.
inline constexpr std::int64_t kFirstOwnHandle = std::int64_t{1} << 40;

// Twips. Of a control: within its window's client area. Of a window: on the
// desktop, its frame included.
struct Place {
    float left = 0;
    float top = 0;
    float width = 0;
    float height = 0;
    friend bool operator==(const Place&, const Place&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.left, self.top, self.width, self.height);
    }
};

// How much a window's frame adds to its client area on each side, in twips.
struct FrameSize {
    float left = 0;
    float top = 0;
    float right = 0;
    float bottom = 0;
    friend bool operator==(const FrameSize&, const FrameSize&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.left, self.top, self.right, self.bottom);
    }
};

// Characters of a text: the first one's place from 0, and how many (UTF-16).
struct TextSpan {
    std::int32_t start = 0;
    std::int32_t length = 0;
    friend bool operator==(const TextSpan&, const TextSpan&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.start, self.length);
    }
};

// How a character of a rich text looks.
struct TextLook {
    bool bold = false;
    bool underline = false;
    Colour colour = 0;
    friend bool operator==(const TextLook&, const TextLook&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.bold, self.underline, self.colour);
    }
};

// A column of a tree view; the width is in pixels, 0 or more.
struct TreeColumn {
    std::u16string key;
    std::u16string text;
    std::int32_t width = 0;
    friend bool operator==(const TreeColumn&, const TreeColumn&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.key, self.text, self.width);
    }
};

// A row of a tree view. Rows are numbered from 1 in the order in which they were
// added; `parent` is the number of an earlier row, 0 at the top level.
struct TreeNode {
    std::u16string key;
    std::int32_t parent = 0;
    std::u16string text;                   // in the first column
    std::vector<std::u16string> subItems;  // in the others
    bool expanded = false;
    friend bool operator==(const TreeNode&, const TreeNode&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.key, self.parent, self.text, self.subItems, self.expanded);
    }
};

enum class ControlKind : std::uint8_t {
    kTreeView,
    kRichText,
    kCheckBox,
    kButton,
    kTextBox,
    kComboBox,
    kLabel,
    kFrame,
    kPicture,
    kRectangle,
    kSplitter,  // a label that is dragged up and down
    kCount_
};

// Whether and how a window is on the screen.
enum class Shown : std::uint8_t { kHidden, kModeless, kModal, kCount_ };

enum class Pointer : std::uint8_t { kDefault, kHand, kSizeVertical, kCount_ };

// What of a window or control can change, with the type of its value.
enum class Property : std::uint8_t {
    kPlace,          // Place
    kCaption,        // text; "&" marks the access key, "&&" is one "&"
    kVisible,        // Boolean; of controls
    kEnabled,        // Boolean
    kForeColour,     // number: Colour of the caption
    kBackColour,     // number: Colour of the background, kDesktopColour
    kPointer,        // number: Pointer
    kText,           // text: content of a text box or rich text
    kSelection,      // TextSpan of that text
    kChecked,        // Boolean
    kItems,          // texts of a combo box
    kListIndex,      // number: chosen item from 0, -1 for none
    kColumns,        // TreeColumns
    kSelectedNode,   // number: row from 1, 0 for none
    kScroll,         // number: pixels that are scrolled away above
    kPicture,        // text: name of a resource
    kOwner,          // handle of the window above which this one stays
    kShown,          // number: Shown
    kResizable,      // Boolean: whether the user can drag the frame
    kFocus,          // number: the window's control that has the focus, 0 for none
    kUpdatesLocked,  // Boolean: nothing is to be painted for the moment
    kCount_
};

// The desktop's own colour for the purpose.
inline constexpr Colour kDesktopColour = -1;

using PropertyValue =
    std::variant<bool, std::int32_t, std::int64_t, Place, TextSpan, std::u16string,
                 std::vector<std::u16string>, std::vector<TreeColumn>>;

// The type that a property has, as the index of PropertyValue's alternative.
std::size_t TypeOf(Property property);

}  // namespace korvane::platform

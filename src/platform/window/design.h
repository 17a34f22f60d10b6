// A window's designed layout: one table that every view reads.
#pragma once

#include <cstdint>
#include <string>
#include <tuple>
#include <vector>

#include "platform/window/types.h"

namespace korvane::platform {

struct ControlDesign {
    ControlKind kind = ControlKind::kLabel;
    std::u16string name;     // "chkPrecise"
    std::u16string caption;  // "&" marks the access key
    Place place;
    // How the control follows the window's size: the letters T, L, H and W, each
    // with an optional factor (navigation/form_resizer.h reads them).
    std::u16string tag;
    // The place in the order in which Tab reaches the controls, from 0; -1 for a
    // control that it does not reach.
    std::int32_t tabIndex = -1;
    bool readOnly = false;   // of a text box: its text can be selected and copied only
    bool isDefault = false;  // of a button: Enter presses it
    bool isCancel = false;   // of a button: Esc presses it
    std::u16string picture;  // of a picture: the name of a resource
    friend bool operator==(const ControlDesign&, const ControlDesign&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.kind, self.name, self.caption, self.place, self.tag, self.tabIndex,
                        self.readOnly, self.isDefault, self.isCancel, self.picture);
    }
};

struct FormDesign {
    std::u16string name;     // "FExplorer"; its settings are kept under it
    std::u16string caption;  // the window's title
    // Where the window stands at first, and the size of its *client area*: how
    // wide a frame is differs between desktops.
    Place place;
    // Without a stored place a view puts the window in the middle of its owner.
    bool centred = false;
    std::vector<ControlDesign> controls;  // the window's control order
    friend bool operator==(const FormDesign&, const FormDesign&) = default;
    template <class Self>
    static auto Fields(Self& self) {
        return std::tie(self.name, self.caption, self.place, self.centred, self.controls);
    }
};

}  // namespace korvane::platform

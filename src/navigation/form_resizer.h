// Makes a dialog resizable: its controls follow its size, and it opens again
// where the user left it.
#pragma once

#include <cstdint>

#include "host/application.h"
#include "platform/screen.h"
#include "platform/settings_store.h"
#include "platform/window/form.h"

namespace korvane {

// A control says in its tag how it follows: the letters T, L, H and W, in either
// case, name its top, left, height and width, each with an optional factor
// behind it ("TL", "W0.5H"): so much of the dialog's change is added. The bounds
// are stored under the dialog's name.
class CFormResizer {
public:
    // All must outlive the resizer.
    CFormResizer(platform::SettingsStore& settings, platform::Screen& screen,
                 host::Application& application)
        : settings_(settings), screen_(screen), application_(application) {}
    CFormResizer(const CFormResizer&) = delete;
    CFormResizer& operator=(const CFormResizer&) = delete;

    // Hands over the dialog, which must outlive the resizer or its last use:
    // makes it resizable and puts it where it was left, on the monitor of the
    // host's window. That raises the dialog's own resize event; connect it
    // before. Raises a conversion error for a stored text that is no bounds; any
    // other failure leaves the dialog as designed.
    void SetForm(platform::Form& dialog);

    // To be called from the dialog's resize event: takes the size back where a
    // control would get a place or size of 0 or less, or where no control
    // follows in that direction; moves and stretches the controls; stores the
    // bounds. Does nothing before SetForm and within itself. Bounds that cannot
    // be stored are not worth a word to the user.
    void FormResize();

private:
    void Limit();
    void Apply();
    void StoreBounds();
    double dHeightChange() const;
    double dWidthChange() const;

    platform::SettingsStore& settings_;
    platform::Screen& screen_;
    host::Application& application_;
    platform::Form* dialog_ = nullptr;
    // The size that the controls are placed for, in twips.
    std::int32_t lLastWidth_ = 0;
    std::int32_t lLastHeight_ = 0;
    bool bBusy_ = false;
};

}  // namespace korvane

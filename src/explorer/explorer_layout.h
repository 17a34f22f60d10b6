// The explorer window's geometry: its smallest size, its splitter and its
// columns, and how they are kept from one window to the next.
#pragma once

#include <cstdint>

#include "host/addin/error_handler.h"
#include "host/application.h"
#include "navigation/form_resizer.h"
#include "platform/screen.h"
#include "platform/settings_store.h"
#include "platform/window/form.h"

namespace korvane {

// Lengths are in twips unless pixels are named.
class CExplorerLayout {
public:
    // All outlive the layout. The form is of ExplorerDesign.
    CExplorerLayout(platform::Form& form, platform::SettingsStore& settings,
                    platform::Screen& screen, host::Application& application,
                    MErrorHandler& errors);
    CExplorerLayout(const CExplorerLayout&) = delete;
    CExplorerLayout& operator=(const CExplorerLayout&) = delete;

    // Brings a window whose place was never stored onto the monitor as a whole,
    // where the desktop's scale makes it larger than the design foresaw. Raises
    // what the screen raises.
    void FitFirstPlace();
    // Gives the columns their stored shares of the tree's width, and the
    // splitter its stored place; what is stored and makes no sense counts as
    // nothing. Raise what the screen raises.
    void LoadColumnWidths();
    void LoadSplitterPosition();
    // From here on the columns follow the window, and are stored with it.
    void SetLoaded() { bLoaded_ = true; }
    // The window's present size is one that it may shrink to no further.
    void AcceptSize();

    // The window has another size, was activated or closes: takes back what is
    // too small, places the controls, gives the tree's change to the first
    // column, and stores the layout. Does nothing within itself.
    void Resize(CFormResizer& resizer);
    // Draws the frame one pixel around the tree.
    void PlaceTreeFrame();

private:
    void ConnectSplitter();
    void LimitSize();
    void RescaleColumns();
    void StoreLayout();
    void SaveLayout();
    void DragSplitter(float y);
    float OptionsRight() const;
    std::u16string sLocalNumber(double number) const;
    double dLocalNumber(const std::u16string& text) const;

    platform::Form& form_;
    platform::SettingsStore& settings_;
    platform::Screen& screen_;
    host::Application& application_;
    MErrorHandler& errors_;
    platform::TreeView& trvTree_;
    platform::Splitter& lblSplitterBar_;
    platform::RichText& rtbFormula_;

    float sngTreeWidth_ = 0;  // of the tree when the columns were set
    float sngLastWidth_ = 0;  // of the window, as accepted last
    float sngLastHeight_ = 0;
    bool bLoaded_ = false;
    bool bInResize_ = false;
    bool bStoreFailed_ = false;  // the last time
    bool bSplitterDrag_ = false;
    double sngSplitterY_ = 0;  // where the bar was taken hold of
};

}  // namespace korvane

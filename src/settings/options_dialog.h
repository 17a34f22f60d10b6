// The settings dialog.
#pragma once

#include <memory>
#include <string>

#include "host/addin/command_windows.h"
#include "platform/window/form.h"

namespace korvane {

struct SharedState;

// Shows every setting; OK stores them, binds the shortcuts anew and brings
// buttons and ribbon up to date.
class FOptions : public CommandWindow {
public:
    // Loads the dialog with the settings as they are. `state` outlives it.
    // Raises when the window cannot be loaded.
    explicit FOptions(SharedState& state);
    FOptions(const FOptions&) = delete;
    FOptions& operator=(const FOptions&) = delete;

    platform::Form& form() override { return *form_; }
    // Whether the dialog ended with OK.
    bool bOK() const { return bOK_; }

private:
    void ShowSettings();
    void ConnectControls();
    void Validate();
    void cmdOK_Click();
    void StoreSettings();
    void ChangeKeys();
    void ChangeIcon();
    void Cancel();
    std::u16string sMainKey() const;
    std::u16string sBackKey() const;
    bool bTicked(const char16_t* name) const;

    SharedState& state_;
    std::unique_ptr<platform::Form> form_;
    bool bOK_ = false;
};

// The dialog's designed layout.
const platform::FormDesign& OptionsDesign();

}  // namespace korvane

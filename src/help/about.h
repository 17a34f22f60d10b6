// The about box.
#pragma once

#include <functional>
#include <memory>

#include "host/addin/command_windows.h"
#include "platform/product.h"
#include "platform/window/form.h"

namespace korvane {

struct SharedState;

// Says what the product is, looks for a newer version, and leads to the maker's
// mail and web site.
class FAbout : public CommandWindow {
public:
    // Loads the box. `checkUpdates` looks for a newer version because the user
    // asked. Both outlive it. Raises when the window cannot be loaded.
    FAbout(SharedState& state, std::function<void()> checkUpdates);
    FAbout(const FAbout&) = delete;
    FAbout& operator=(const FAbout&) = delete;

    platform::Form& form() override { return *form_; }

private:
    void ShowLink(const char16_t* box, const std::u16string& text, const std::u16string& address,
                  const char16_t* procedure);

    SharedState& state_;
    std::unique_ptr<platform::Form> form_;
};

// The box's designed layout.
const platform::FormDesign& AboutDesign();

// "Version 2.1", "Version 2.1.5" for a revision of 1 or more.
std::u16string sVersionText(const platform::ProductVersion& version);

}  // namespace korvane

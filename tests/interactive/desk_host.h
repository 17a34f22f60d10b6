// The host that an add-in has in a running Calc, wired as its component does.
#pragma once

#include <filesystem>
#include <memory>

#include "bindings/calc/desk/calc_command_bars.h"
#include "bindings/calc/desk/desk_application.h"
#include "bindings/calc/desk/shortcut_keys.h"
#include "bindings/calc/desk/tint_guard.h"

namespace korvane::test {

// Where the host notes what stands in documents for a moment.
std::filesystem::path JournalFolder();

class DeskHost {
public:
    // A host of its own; it ends with the last handle of its application.
    static host::ApplicationPtr Start();

    DeskHost();
    ~DeskHost();
    DeskHost(const DeskHost&) = delete;
    DeskHost& operator=(const DeskHost&) = delete;

private:
    // Follows the user from window to window.
    class Follower : public host::ApplicationEvents {
    public:
        void WindowActivate(const host::WorkbookPtr& /*workbook*/) override {}
    };
    using Model = calc::OpenDocuments::Model;

    calc::DeskParts Parts();
    calc::DocumentPtr DocumentOf(const Model& model);

    calc::ShortcutKeys keys_;
    std::shared_ptr<calc::CalcCommandBars> bars_;
    calc::DeskApplication application_;
    calc::TintGuard guard_;
    Follower follower_;
    host::SubscriptionPtr following_;
};

}  // namespace korvane::test

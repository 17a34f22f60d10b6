// The platform of a program without a toolkit: a view shows its windows, the
// system gives the rest.
#pragma once

#include <filesystem>
#include <optional>

#include "apps/window/settings_overrides.h"
#include "bindings/posix/folders.h"
#include "bindings/posix/ini_settings_store.h"
#include "bindings/posix/posix_clock.h"
#include "bindings/posix/posix_files.h"
#include "bindings/posix/posix_shell.h"
#include "bindings/view_link/linked_message_boxes.h"
#include "bindings/view_link/linked_screen.h"
#include "bindings/view_link/pump.h"
#include "bindings/view_link/view_link.h"
#include "platform/platform.h"
#include "platform/window/windows.h"

namespace korvane::window {

struct SessionSettings {
    // In place of the stored ones, until the user changes them in a window.
    std::optional<bool> bEveryFunction;
    std::optional<bool> bPreciseCalc;
    posix::Folders folders;
    // Where the add-in lies, native; empty for none.
    std::filesystem::path addinFolder;
};

class Services {
public:
    // The link outlives the services; its views show their windows.
    Services(view_link::ViewLink& link, const SessionSettings& settings);
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    platform::Platform& platform() { return platform_; }
    view_link::Pump& pump() { return pump_; }
    const platform::Windows& windows() const { return windows_; }

private:
    // A host without bars shows no picture.
    class NoPictures : public platform::Resources {
    public:
        std::string Picture(const std::u16string& name) override;
    };
    // There is no server to be asked.
    class NoUrls : public platform::UrlReader {
    public:
        std::u16string Read(const std::u16string& address, std::chrono::seconds timeout) override;
    };

    view_link::Pump pump_;
    platform::Windows windows_{pump_};
    view_link::ShownWindows shown_;
    view_link::LinkedScreen screen_;
    view_link::LinkedMessageBoxes messageBoxes_;
    posix::PosixClock clock_;
    posix::PosixFiles files_;
    posix::PosixShell shell_;
    posix::IniSettingsStore stored_;
    SettingsOverrides settings_{stored_};
    NoPictures pictures_;
    NoUrls urls_;
    platform::Platform platform_;
};

}  // namespace korvane::window

// The platform of a program without a toolkit: a view shows its windows, the
// system gives the rest.
#pragma once

#include <filesystem>
#include <optional>

#include "apps/window/settings_overrides.h"
#include "bindings/curl/curl_url_reader.h"
#include "bindings/posix/folders.h"
#include "bindings/posix/help_viewer.h"
#include "bindings/posix/ini_settings_store.h"
#include "bindings/posix/posix_clock.h"
#include "bindings/posix/posix_files.h"
#include "bindings/posix/posix_shell.h"
#include "bindings/resources/built_in_pictures.h"
#include "bindings/view_link/linked_message_boxes.h"
#include "bindings/view_link/linked_screen.h"
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
    // The link outlives the services; its views show their windows. `modal` waits
    // for the user, and outlives them too.
    Services(view_link::ViewLink& link, platform::ModalLoop& modal,
             const SessionSettings& settings);
    Services(const Services&) = delete;
    Services& operator=(const Services&) = delete;

    platform::Platform& platform() { return platform_; }
    platform::Windows& windows() { return windows_; }
    // Told by the host of its own windows.
    view_link::LinkedScreen& screen() { return screen_; }
    view_link::LinkedMessageBoxes& messageBoxes() { return messageBoxes_; }

private:
    platform::Windows windows_;
    view_link::ShownWindows shown_;
    view_link::LinkedScreen screen_;
    view_link::LinkedMessageBoxes messageBoxes_;
    posix::PosixClock clock_;
    posix::PosixFiles files_;
    posix::PosixShell shell_;
    posix::IniSettingsStore stored_;
    SettingsOverrides settings_{stored_};
    resources::BuiltInPictures pictures_;
    curl::CurlUrlReader urls_;
    posix::Manual manual_;
    posix::FilesWithHelp filesWithHelp_{files_, manual_};
    posix::ShellWithHelp shellWithHelp_{shell_, manual_};
    platform::Platform platform_;
};

}  // namespace korvane::window

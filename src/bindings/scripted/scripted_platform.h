// A platform that lives in memory: services with real state that tests read and
// set, every call counted, noted and failed as those to the scripted host are.
#pragma once

#include <memory>

#include "bindings/scripted/accesses.h"
#include "bindings/scripted/scripted_clock.h"
#include "bindings/scripted/scripted_files.h"
#include "bindings/scripted/scripted_message_boxes.h"
#include "bindings/scripted/scripted_modal.h"
#include "bindings/scripted/scripted_resources.h"
#include "bindings/scripted/scripted_screen.h"
#include "bindings/scripted/scripted_settings_store.h"
#include "bindings/scripted/scripted_shell.h"
#include "bindings/scripted/scripted_url_reader.h"
#include "platform/platform.h"
#include "platform/window/windows.h"

namespace korvane::scripted {

class ScriptedPlatform {
public:
    // Given a scripted host's sharedAccesses both are counted together.
    explicit ScriptedPlatform(
        const std::shared_ptr<Accesses>& accesses = std::make_shared<Accesses>());
    ScriptedPlatform(const ScriptedPlatform&) = delete;
    ScriptedPlatform& operator=(const ScriptedPlatform&) = delete;

    Accesses& accesses() { return *accesses_; }

    ScriptedClock clock;
    ScriptedFiles files;
    ScriptedMessageBoxes messageBoxes;
    ScriptedModalLoop modal;
    ScriptedResources resources;
    ScriptedScreen screen;
    ScriptedSettingsStore settings;
    ScriptedShell shell;
    ScriptedUrlReader urls;
    platform::ProductVersion version{2, 1, 5};
    platform::ProductLinks links{u"https://example.org", u"https://example.org",
                                 u"support@example.org"};
    // The window model itself: it needs no script. What a window system may
    // refuse is counted and failed as the rest.
    platform::Windows windows{modal};

    // All of it, for the system. Lives as long as this.
    platform::Platform& Services() { return services_; }

private:
    std::shared_ptr<Accesses> accesses_;
    platform::Platform services_{clock,    files, messageBoxes, resources, screen,
                                 settings, shell, urls,         windows,   version,
                                 links};
};

}  // namespace korvane::scripted

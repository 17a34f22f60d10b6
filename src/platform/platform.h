// All that the system asks of the platform it runs on, beside the host.
//
// Rules for every interface of this folder:
// - A call that fails throws korvane::Error and nothing else; none is retried.
// - All calls are made on the host's single user-interface thread, and none
//   comes back into the system unless its comment says so.
#pragma once

#include "platform/clock.h"
#include "platform/files.h"
#include "platform/message_boxes.h"
#include "platform/modal.h"
#include "platform/product.h"
#include "platform/resources.h"
#include "platform/screen.h"
#include "platform/settings_store.h"
#include "platform/shell.h"
#include "platform/url_reader.h"

namespace korvane::platform {

class Windows;

// The services of one running system. A program fills it in; everything that it
// refers to outlives the system. Parts of the system take the single services
// that they use.
struct Platform {
    Clock& clock;
    Files& files;
    MessageBoxes& messageBoxes;
    Resources& resources;
    Screen& screen;
    SettingsStore& settings;
    Shell& shell;
    UrlReader& urls;
    Windows& windows;  // platform/window/windows.h
    ProductVersion version;
    ProductLinks links;
};

}  // namespace korvane::platform

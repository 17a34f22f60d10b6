// Shows one of the dialogs as a host with a menu bar does, until it is closed:
// for the manual's pictures. Nothing is explored, so no host is started.
// Usage: show_dialog settings|about
#include <cstdio>
#include <exception>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/addin/addin.h"
#include "apps/command/view_program.h"
#include "apps/window/services.h"
#include "bindings/scripted/load_document.h"
#include "bindings/scripted/scripted_host.h"
#include "bindings/view_link/pump.h"
#include "bindings/view_link/view_link.h"

namespace {

using namespace korvane;

int Show(const std::string& dialog) {
    // With a ribbon no bars are built, which nobody would see here.
    const auto documents = scripted::SplitDocuments(
        R"({"workbooks": [{"name": "B.xls", "sheets": [{"name": "S"}]}]})");
    scripted::ScriptedHost host(scripted::LoadDocument(documents.front()));
    host.version = u"12.0";
    host.hwnd = 0;

    view_link::ViewLink link(command::FindView());
    window::SessionSettings settings;
    settings.folders = posix::UserFolders();
    view_link::Pump pump(link);
    window::Services services(link, pump, settings);
    if (!link.EnsureView()) return 1;
    Addin addin(services.platform());
    addin.main().AutoOpen(host.Application(), host.AddinWorkbook());
    // The captions of the dialogs are those of a host with a menu bar.
    addin.state().hostHasRibbon = false;
    if (dialog == "about") {
        addin.commands().ShowAbout();
    } else {
        addin.commands().EP_Options();
    }
    addin.state().hostHasRibbon = true;
    addin.main().ShutDown();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    const std::string dialog = argc == 2 ? argv[1] : "";
    if (dialog != "settings" && dialog != "about") {
        std::fputs("usage: show_dialog settings|about\n", stderr);
        return 2;
    }
    try {
        return Show(dialog);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "show_dialog: %s\n", error.what());
        return 1;
    }
}

// The add-in as its host sees it.
#pragma once

#include "host/addin/commands.h"
#include "host/application.h"
#include "host/ribbon.h"
#include "host/workbook.h"

namespace korvane {

struct SharedState;

// The class whose members the host calls. Every member is an entry point: it
// reports its own failure and never raises. Before AutoOpen and after ShutDown
// none but AutoOpen does anything.
//
// There may be several in one process; they share one state. The one whose
// AutoOpen started the add-in ends it when it ends itself.
class CMain {
public:
    // Both outlive the instance.
    CMain(SharedState& state, Commands& commands) : state_(state), commands_(commands) {}
    CMain(const CMain&) = delete;
    CMain& operator=(const CMain&) = delete;
    // Saves the settings and lets go of the host, without touching its bars.
    ~CMain();

    // Starts the add-in in the host; `workbook` is the add-in's own. A failure is
    // told and leaves nothing behind. Does nothing while the add-in runs.
    void AutoOpen(const host::ApplicationPtr& application, const host::WorkbookPtr& workbook);
    // Saves the settings; the add-in runs on.
    void AutoClose();
    // The user took the add-in off the host's list: removes menu and buttons.
    void AddinUninstall();
    // Does nothing: a setting is written when it is changed.
    void SaveApplicationSettings();
    // Removes the system's controls, closes its windows, and lets go of every
    // object of the host, whatever fails on the way; those that a command still
    // needs, which waits for its user, when that has ended.
    void ShutDown();

    void Explore();
    void GoBack();

    // The ribbon has loaded; it is kept for the process's life.
    void RibbonOnLoad(const host::IRibbonUIPtr& ribbon);
    // A button of the ribbon was pressed.
    void RibbonCommand(const host::IRibbonControlPtr& control);
    // Whether the ribbon shows its explore button; leaves `returnedVal` alone for
    // any other control.
    void RibbonGetButtonVisible(const host::IRibbonControlPtr& control, Value& returnedVal);

private:
    void Start(const host::ApplicationPtr& application, const host::WorkbookPtr& workbook);
    void InitialiseShared();
    void CloseWindows();

    SharedState& state_;
    Commands& commands_;
};

}  // namespace korvane

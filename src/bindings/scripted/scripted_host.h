// A host that lives in memory: it keeps real state (contents, selection,
// calculation mode, fills, command bars), logs every access, and fails where it
// is told to. Tests, the command line and bug reports run the core on it.
#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include "bindings/scripted/accesses.h"
#include "bindings/scripted/model.h"
#include "host/application.h"
#include "host/command_bars.h"
#include "host/range.h"

namespace korvane::scripted {

struct ControlData;  // scripted_command_bars.h

class ScriptedHost {
public:
    // Without `accesses` it has its own.
    explicit ScriptedHost(Model model, std::shared_ptr<Accesses> accesses = nullptr);
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;
    // All handles must be gone by now.
    ~ScriptedHost();

    // The host object, one for all who hold it. When the last handle of it goes,
    // the keys that were bound through it are the host's again. Let go of it
    // before the end.
    host::ApplicationPtr Application();
    // The add-in's own workbook, as the host hands it to the add-in that it
    // loads: ThisWorkbook of the application answers the same.
    host::WorkbookPtr AddinWorkbook();
    // The cells that a user names: a reference, or a defined name that leads to
    // one. Nothing when there are none.
    std::optional<Place> FindCells(const std::u16string& text) const;
    host::RangePtr RangeAt(const Place& place);

    Model& model() { return model_; }
    // Handles that are still held somewhere, subscriptions among them.
    int LiveHandles() const { return liveHandles_; }

    // The accesses to this host, and to whatever else was given the same ones.
    Accesses& accesses() { return *accesses_; }
    const std::shared_ptr<Accesses>& sharedAccesses() const { return accesses_; }
    // What Accesses does, for tests that have no more than a host.
    void StartLog() { accesses_->StartLog(); }
    const std::vector<std::string>& log() const { return accesses_->log(); }
    int CountOf(const std::string& member) const { return accesses_->CountOf(member); }
    std::int64_t calls() const { return accesses_->calls(); }
    void FailNthCall(std::int64_t nth) { accesses_->FailNthCall(nth); }
    void FailMember(const std::string& member, int nth = 0) { accesses_->FailMember(member, nth); }
    void FailNothing() { accesses_->FailNothing(); }
    const std::string& lastFailure() const { return accesses_->lastFailure(); }

    // Closes a workbook: every access to it fails from now on.
    void CloseBook(const std::u16string& name);

    // What the system did to the host.
    Value statusBar{false};
    int cursor = 0;
    bool enableEvents = true;
    std::map<std::u16string, std::u16string> keys;  // bound by OnKey
    std::set<std::u16string> refusedKeys;           // OnKey fails for these
    std::u16string version = u"11.0";
    std::u16string caption = u"Scripted host";
    std::int64_t hwnd = 1;            // of the main window
    std::u16string thisWorkbookName;  // the add-in's own workbook, as the model says
    std::u16string thisWorkbookPath;
    // The type of what is selected when it is no range, such as "ChartArea".
    std::u16string selectedObject;
    Area selection;
    bool nothingOpen = false;  // no workbook: no active cell, no selection

    // Raises the events as a host does; no access to it. Nobody can click a
    // control that was deleted: nothing happens then.
    void RaiseWindowActivate();
    void RaiseClick(const host::CommandBarControlPtr& control, bool& cancelDefault);

    // For the host's own objects: every member begins with it. Counts, notes and
    // fails the access.
    void Enter(const char* member, std::u16string_view detail = {}) {
        accesses_->Enter(member, detail);
    }
    // Keeps count of a handle for as long as it lives.
    class Counted {
    public:
        explicit Counted(ScriptedHost& host) : host_(host) { ++host.liveHandles_; }
        Counted(const Counted&) = delete;
        Counted& operator=(const Counted&) = delete;
        ~Counted() { --host_.liveHandles_; }

    private:
        ScriptedHost& host_;
    };

    // Evaluates a text as Application.Evaluate does, without noting it.
    Value Evaluate(const std::u16string& text);
    // What a formula gives that is written into a cell.
    Value EvaluateWritten(const std::u16string& formula) const;
    // Whether the document itself says what this very formula gives.
    bool AnswersWritten(const std::u16string& formula) const {
        return model_.write.count(formula) > 0 || model_.evaluate.count(formula) > 0;
    }

    // The root of all command-bar controls: its children are the bars.
    const std::shared_ptr<ControlData>& bars() const { return bars_; }
    // All bars as text, a line for each control, for tests that compare:
    //     Worksheet Menu Bar
    //       &Tools id=30007
    //         &Explore id=1 tag=t parameter=p group style=1 hidden temporary
    // with what is not as of a new control behind the id.
    std::string BarsText() const;
    // One for each subscription.
    std::multiset<host::ApplicationEvents*> applicationSinks;

private:
    // What a text denotes: cells, or else a value.
    struct Denoted {
        std::optional<Place> cells;
        Value value;
    };
    Denoted Denote(const std::u16string& text) const;
    Denoted DenoteAnswer(const Answer& answer) const;

    Model model_;
    std::shared_ptr<Accesses> accesses_;
    std::weak_ptr<host::Application> application_;
    std::shared_ptr<ControlData> bars_;
    int liveHandles_ = 0;
};

}  // namespace korvane::scripted

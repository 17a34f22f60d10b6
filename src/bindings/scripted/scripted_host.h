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

#include "bindings/scripted/model.h"
#include "host/application.h"
#include "host/command_bars.h"
#include "host/range.h"

namespace korvane::scripted {

struct ControlData;  // command_bars.h

class ScriptedHost {
public:
    explicit ScriptedHost(Model model);
    ScriptedHost(const ScriptedHost&) = delete;
    ScriptedHost& operator=(const ScriptedHost&) = delete;
    // All handles must be gone by now.
    ~ScriptedHost();

    // The host object. A handle like any other: let go of it before the end.
    host::ApplicationPtr Application();
    // The cells that a user names: a reference, or a defined name that leads to
    // one. Nothing when there are none.
    std::optional<Place> FindCells(const std::u16string& text) const;
    host::RangePtr RangeAt(const Place& place);

    Model& model() { return model_; }
    // Handles that are still held somewhere.
    int LiveHandles() const { return liveHandles_; }

    // From here on every access is noted, as "Range.Formula" or
    // "Application.Evaluate =A1".
    void StartLog() { logging_ = true; }
    const std::vector<std::string>& log() const { return log_; }
    // How many noted accesses were of this member.
    int CountOf(const std::string& member) const;

    // Accesses so far, noted or not.
    std::int64_t calls() const { return calls_; }
    // Makes the nth access from now (1 is the next) fail, whatever it is.
    void FailNthCall(std::int64_t nth) { failAt_ = calls_ + nth; }
    // Makes every access of a member fail, or only its nth from now.
    void FailMember(const std::string& member, int nth = 0) {
        failMembers_[member] = {nth == 0, nth};
    }
    void FailNothing();
    // The member whose access failed last; empty for none.
    const std::string& lastFailure() const { return lastFailure_; }

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
    std::u16string thisWorkbookName = u"KorvaneExplorer.xla";
    std::u16string thisWorkbookPath;
    // The type of what is selected when it is no range, such as "ChartArea".
    std::u16string selectedObject;
    Area selection;
    bool nothingOpen = false;  // no workbook: no active cell, no selection

    // Raises the events as a host does.
    void RaiseWindowActivate();
    void RaiseClick(const host::CommandBarControlPtr& control, bool& cancelDefault);

    // For the host's own objects: every member begins with it. Counts, notes and
    // fails the access.
    void Enter(const char* member, std::u16string_view detail = {});
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
    std::set<host::ApplicationEvents*> applicationSinks;

private:
    // What a text denotes: cells, or else a value.
    struct Denoted {
        std::optional<Place> cells;
        Value value;
    };
    Denoted Denote(const std::u16string& text) const;
    Denoted DenoteAnswer(const Answer& answer) const;

    Model model_;
    std::shared_ptr<ControlData> bars_;
    int liveHandles_ = 0;
    bool logging_ = false;
    std::vector<std::string> log_;
    std::int64_t calls_ = 0;
    std::int64_t failAt_ = 0;
    struct MemberFailure {
        bool every = false;
        int left = 0;  // accesses up to and with the one that fails
    };
    std::map<std::string, MemberFailure> failMembers_;
    std::string lastFailure_;
};

}  // namespace korvane::scripted

// The host's top object.
//
// Rules for every interface of this folder:
// - They carry the object model's own names; a property's put is `Set` + name.
// - Every call can fail and then throws korvane::Error with the host's number
//   and description; nothing else is thrown. No call is retried.
// - An access to an object that lives no more (its document closed, its host
//   process lost) throws; it never answers 0 or an empty text instead.
// - All calls are made on the host's single user-interface thread.
// - Returned handles are the caller's to let go; none is ever null unless the
//   member says so.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

// The application's events. Implementations must not throw.
class ApplicationEvents {
public:
    virtual ~ApplicationEvents() = default;
    // A workbook window became active. Needed by the sink that binds the
    // keyboard shortcuts again.
    virtual void WindowActivate(const WorkbookPtr& workbook) = 0;
};

// Keys that were bound through it are the host's again when its last handle goes.
class Application : public Object {
public:
    std::u16string TypeName() const override { return u"Application"; }

    // The version text, such as "12.0". Its first two characters read as a
    // number tell whether the host has a ribbon (12 or more). Needed at
    // start-up and in every line of the error log.
    virtual std::u16string Version() = 0;
    // The title of the main window, exactly; start-up finds the window by it.
    virtual std::u16string Caption() = 0;
    // The main window's handle as the platform counts windows; the owner of
    // every window that the system opens. 0 when the host has no window.
    virtual std::int64_t Hwnd() = 0;

    // A text is shown in the status bar; the Boolean False hands it back.
    virtual void SetStatusBar(const Value& text) = 0;
    // The pointer; only xlDefault is ever set.
    virtual void SetCursor(int cursor) = 0;
    // False keeps the host from raising events (and running event code).
    virtual void SetEnableEvents(bool enable) = 0;

    // Whether the host repaints while selections and values change. Saved,
    // switched off and restored around precise evaluation.
    virtual bool ScreenUpdating() = 0;
    virtual void SetScreenUpdating(bool update) = 0;

    // The calculation mode (xlCalculationManual, xlCalculationAutomatic, or any
    // other of the host's). Saved, set to manual and restored around precise
    // evaluation.
    virtual int Calculation() = 0;
    virtual void SetCalculation(int mode) = 0;

    // Evaluates an expression text (it begins with "=") as the host evaluates a
    // formula, sheet-less references meaning the active sheet. Returns a Range
    // object for a reference, an array for an array, an error *value* for an
    // expression that fails or that the host cannot read. Raises only when the
    // host itself fails. Needed for the value and the cells of every part.
    virtual korvane::Value Evaluate(const std::u16string& expression) = 0;
    // Says that many evaluations follow, one upon the other, for as long as the
    // answer is held: a host can prepare for all of them at once. Null when there
    // is nothing to prepare; never raises.
    virtual std::shared_ptr<void> BeginEvaluations() { return nullptr; }

    // The selected object (a Range when cells are selected); null when nothing
    // is open. Callers ask only for its TypeName and for a Range.
    virtual ObjectPtr Selection() = 0;
    // The active cell of the active window. Raises when there is none.
    virtual RangePtr ActiveCell() = 0;

    // The classic command bars; null where the host has no bars at all. Needed by
    // hosts without a ribbon.
    virtual host::CommandBarsPtr CommandBars() = 0;
    // The add-in's own workbook as the host sees it, for the error log.
    virtual WorkbookPtr ThisWorkbook() = 0;

    // Binds a key combination ("^" Ctrl, "%" Alt, "^%" both, then one letter)
    // to a macro of the loader. Raises for a key that the host refuses.
    virtual void OnKey(const std::u16string& key, const std::u16string& procedure) = 0;
    // Gives the key back to the host (OnKey with the procedure left out).
    virtual void OnKey(const std::u16string& key) = 0;

    // How the user's host writes the fraction of a number: "." or "," mostly.
    virtual std::u16string DecimalSeparator() = 0;
    // A date as the user's host writes it: its short date, then a blank and the
    // time when `serial` has a fraction. `serial` counts days since 30 December
    // 1899. Value texts of dates are this text.
    virtual std::u16string DateText(double serial) = 0;

    // Delivers the application's events to `sink` until the subscription is let
    // go. `sink` must outlive it.
    virtual SubscriptionPtr Connect(ApplicationEvents& sink) = 0;
};

}  // namespace korvane::host

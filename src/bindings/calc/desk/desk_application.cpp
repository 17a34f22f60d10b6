#include "bindings/calc/desk/desk_application.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>
#include <com/sun/star/sheet/XSheetCellRangeContainer.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/task/XStatusIndicatorFactory.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "base/a1.h"
#include "base/attempt.h"
#include "base/text.h"
#include "bindings/calc/calc_range.h"
#include "bindings/calc/dates.h"
#include "bindings/calc/desk/frame_window.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/host_version.h"
#include "bindings/calc/leave_as_found.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;

namespace {

// Something selected that is no cells: a chart, a shape, a page preview.
class OtherSelection : public Object {
public:
    std::u16string TypeName() const override { return u"Shape"; }
};

bool AreCells(const Reference<css::frame::XController>& controller) {
    const Reference<css::sheet::XSpreadsheetView> sheets(controller, UNO_QUERY);
    const Reference<css::view::XSelectionSupplier> supplier(controller, UNO_QUERY);
    if (!sheets.is() || !supplier.is()) return false;
    const css::uno::Any selected = supplier->getSelection();
    return Reference<css::sheet::XSheetCellRange>(selected, UNO_QUERY).is() ||
           Reference<css::sheet::XSheetCellRangeContainer>(selected, UNO_QUERY).is();
}

// Lets events pass while they are on.
class SwitchedSink : public host::ApplicationEvents {
public:
    SwitchedSink(host::ApplicationEvents& sink, std::shared_ptr<const bool> eventsOn)
        : sink_(sink), eventsOn_(std::move(eventsOn)) {}
    void WindowActivate(const host::WorkbookPtr& workbook) override {
        if (*eventsOn_) sink_.WindowActivate(workbook);
    }

private:
    host::ApplicationEvents& sink_;
    std::shared_ptr<const bool> eventsOn_;
};

class SwitchedSubscription : public host::Subscription {
public:
    SwitchedSubscription(host::ApplicationEvents& sink, std::shared_ptr<const bool> eventsOn)
        : sink_(sink, std::move(eventsOn)) {}
    SwitchedSink& sink() { return sink_; }
    void Hold(host::SubscriptionPtr inner) { inner_ = std::move(inner); }

private:
    SwitchedSink sink_;
    host::SubscriptionPtr inner_;  // ends first
};

}  // namespace

DeskApplication::DeskApplication(const Reference<css::uno::XComponentContext>& context,
                                 AddinFile addin, DeskParts parts)
    : context_(context), addin_(std::move(addin)), parts_(std::move(parts)), documents_(context) {}

DeskApplication::~DeskApplication() {
    try {
        SetScreenUpdating(true);
        SetStatusBar(Value(false));
    } catch (const Error&) {
        // The document is gone, and its locks with it.
    }
}

OpenDocument& DeskApplication::Active() {
    OpenDocument* const open = documents_.Active();
    if (open == nullptr) Fail(u"No spreadsheet is open");
    open->document->Require();
    return *open;
}

std::u16string DeskApplication::Version() {
    return Translated([&] { return HostVersion(OfficeVersion(context_)); });
}

std::u16string DeskApplication::Caption() {
    return Translated([&] {
        const Reference<css::beans::XPropertySet> frame(documents_.ActiveFrame(), UNO_QUERY);
        rtl::OUString title;
        if (frame.is()) frame->getPropertyValue(ToOUString(u"Title")) >>= title;
        return ToText(title);
    });
}

std::int64_t DeskApplication::Hwnd() {
    return Translated([&] { return WindowHandle(documents_.ActiveFrame()); });
}

void DeskApplication::SetStatusBar(const Value& text) {
    Translated([&] {
        if (status_.is()) status_->end();
        status_.clear();
        const auto* const shown = text.Text();
        if (shown == nullptr) return;
        const Reference<css::task::XStatusIndicatorFactory> frame(documents_.ActiveFrame(),
                                                                  UNO_QUERY);
        if (!frame.is()) return;
        status_ = frame->createStatusIndicator();
        if (status_.is()) status_->start(ToOUString(*shown), 0);
    });
}

void DeskApplication::SetCursor(int /*cursor*/) {}

// Calc runs code of a document on events of its own choice; none comes of what
// is written here, because it is silenced. So only the events that are raised here
// are kept back.
void DeskApplication::SetEnableEvents(bool enable) { *eventsOn_ = enable; }

bool DeskApplication::ScreenUpdating() { return still_ == nullptr; }

void DeskApplication::SetScreenUpdating(bool update) {
    if (update == ScreenUpdating()) return;
    Translated([&] {
        if (!update) {
            DocumentPtr document = Active().document;
            document->LockViews(true);
            still_ = std::move(document);
            return;
        }
        const DocumentPtr document = std::move(still_);
        still_ = nullptr;
        if (document->IsClosed()) return;
        // The exploration is over: nothing of it may stay, not even until the next.
        PutBackFormula(*document);
        document->LockViews(false);
    });
}

int DeskApplication::Calculation() {
    return Translated(
        [&] { return calculation_ ? *calculation_ : Active().document->CalculationMode(); });
}

void DeskApplication::SetCalculation(int mode) { calculation_ = mode; }

korvane::Value DeskApplication::Evaluate(const std::u16string& expression) {
    return Translated([&]() -> korvane::Value {
        OpenDocument& open = Active();
        if (auto cells = CellsElsewhere(expression, open)) return korvane::Value(ObjectPtr(cells));
        auto result = open.evaluator->Evaluate(expression);
        if (!result.place) return std::move(result.value);
        return korvane::Value(
            ObjectPtr(CalcRange::Make(open.document, result.place->sheet, result.place->area)));
    });
}

std::shared_ptr<void> DeskApplication::BeginEvaluations() {
    std::shared_ptr<void> silence;
    Suppressed([&] {
        if (const auto* const open = documents_.Active()) silence = SilenceOf(open->document);
    });
    return silence;
}

// The evaluator never follows a link, and the office would read a file for one; but
// cells of a workbook that is open here are there to be shown.
host::RangePtr DeskApplication::CellsElsewhere(const std::u16string& expression,
                                               const OpenDocument& here) {
    if (!expression.starts_with(u'=') || expression.find(u']') == std::u16string::npos) return {};
    const auto parts = SplitReference(expression.substr(1));
    if (!parts || parts->book.empty() || parts->sheet.empty()) return {};
    if (EqualIgnoringCase(parts->book, here.document->FileName())) return {};
    const auto area = ParseArea(parts->rest);
    OpenDocument* const open = area ? documents_.Named(parts->book) : nullptr;
    const auto sheet = open != nullptr ? open->document->FindSheet(parts->sheet) : std::nullopt;
    return sheet ? CalcRange::Make(open->document, *sheet, *area) : nullptr;
}

ObjectPtr DeskApplication::Selection() {
    return Translated([&]() -> ObjectPtr {
        OpenDocument* const open = documents_.Active();
        if (open == nullptr) return nullptr;
        if (!AreCells(open->document->controller())) return std::make_shared<OtherSelection>();
        return CalcRange::Make(open->document, open->document->ActiveCell().Sheet,
                               open->document->Selection());
    });
}

host::RangePtr DeskApplication::ActiveCell() {
    return Translated([&] {
        const DocumentPtr& document = Active().document;
        const CellAddress cell = document->ActiveCell();
        return CalcRange::Make(document, cell.Sheet,
                               {cell.Row + 1, cell.Column + 1, cell.Row + 1, cell.Column + 1});
    });
}

host::CommandBarsPtr DeskApplication::CommandBars() {
    return parts_.commandBars ? parts_.commandBars() : nullptr;
}

host::WorkbookPtr DeskApplication::ThisWorkbook() {
    return std::make_shared<AddinWorkbook>(addin_);
}

void DeskApplication::OnKey(const std::u16string& key, const std::u16string& procedure) {
    if (!parts_.bindKey) FailWithoutWindow(u"Application.OnKey");
    parts_.bindKey(key, procedure);
}

void DeskApplication::OnKey(const std::u16string& key) {
    if (!parts_.releaseKey) FailWithoutWindow(u"Application.OnKey");
    parts_.releaseKey(key);
}

std::u16string DeskApplication::DecimalSeparator() {
    return Translated([&] { return calc::DecimalSeparator(context_); });
}

std::u16string DeskApplication::DateText(double serial) {
    return Translated([&] { return calc::DateText(context_, serial); });
}

host::SubscriptionPtr DeskApplication::Connect(host::ApplicationEvents& sink) {
    if (!parts_.connect) return std::make_unique<host::Subscription>();
    auto subscription = std::make_unique<SwitchedSubscription>(sink, eventsOn_);
    subscription->Hold(parts_.connect(subscription->sink()));
    return subscription;
}

}  // namespace korvane::calc

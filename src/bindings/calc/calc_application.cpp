#include "bindings/calc/calc_application.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/XController.hpp>
#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>

#include "base/text.h"
#include "bindings/calc/calc_names.h"
#include "bindings/calc/calc_range.h"
#include "bindings/calc/calc_sheets.h"
#include "bindings/calc/dates.h"
#include "bindings/calc/evaluator.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/host_version.h"
#include "bindings/calc/kept_cell.h"
#include "bindings/calc/leave_as_found.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

CalcApplication::CalcApplication(const Reference<css::uno::XComponentContext>& context,
                                 const Reference<css::frame::XModel>& model, AddinFile addin)
    : addin_(std::move(addin)) {
    Translated([&] {
        const Reference<css::lang::XServiceInfo> info(model, UNO_QUERY_THROW);
        if (!info->supportsService(ToOUString(u"com.sun.star.sheet.SpreadsheetDocument"))) {
            Fail(u"The document is no spreadsheet");
        }
        document_ = std::make_shared<CalcDocument>(context, model);
        evaluator_ = std::make_unique<Evaluator>(*document_);
    });
}

CalcApplication::~CalcApplication() {
    if (screenUpdating_) return;
    try {
        SetScreenUpdating(true);
    } catch (const Error&) {
        // The document is gone, and its locks with it.
    }
}

std::u16string CalcApplication::Version() {
    return Translated([&] { return HostVersion(OfficeVersion(document_->context())); });
}

std::u16string CalcApplication::Caption() {
    return Ask(document_, [&] {
        const auto controller = document_->controller();
        const Reference<css::beans::XPropertySet> frame(
            controller.is() ? controller->getFrame() : Reference<css::frame::XFrame>(), UNO_QUERY);
        rtl::OUString title;
        if (frame.is()) frame->getPropertyValue(ToOUString(u"Title")) >>= title;
        return ToText(title);
    });
}

std::int64_t CalcApplication::Hwnd() { return 0; }

void CalcApplication::SetStatusBar(const Value& /*text*/) {}

void CalcApplication::SetCursor(int /*cursor*/) {}

// No code of a workbook ever runs here, on events or otherwise.
void CalcApplication::SetEnableEvents(bool /*enable*/) {}

bool CalcApplication::ScreenUpdating() { return screenUpdating_; }

void CalcApplication::SetScreenUpdating(bool update) {
    if (update == screenUpdating_) return;
    Ask(document_, [&] {
        if (update) PutBackFormula(*document_);
        document_->LockViews(!update);
    });
    screenUpdating_ = update;
}

int CalcApplication::Calculation() {
    return Ask(document_,
               [&] { return calculation_ ? *calculation_ : document_->CalculationMode(); });
}

void CalcApplication::SetCalculation(int mode) {
    document_->Require();
    calculation_ = mode;
}

korvane::Value CalcApplication::Evaluate(const std::u16string& expression) {
    return Ask(document_, [&]() -> korvane::Value {
        auto result = evaluator_->Evaluate(expression);
        if (!result.place) return std::move(result.value);
        return korvane::Value(
            ObjectPtr(CalcRange::Make(document_, result.place->sheet, result.place->area)));
    });
}

std::shared_ptr<void> CalcApplication::BeginEvaluations() { return SilenceOf(document_); }

ObjectPtr CalcApplication::Selection() {
    return Ask(document_, [&]() -> ObjectPtr {
        return CalcRange::Make(document_, document_->ActiveCell().Sheet, document_->Selection());
    });
}

host::RangePtr CalcApplication::ActiveCell() {
    return Ask(document_, [&] {
        const CellAddress cell = document_->ActiveCell();
        return CalcRange::Make(document_, cell.Sheet,
                               {cell.Row + 1, cell.Column + 1, cell.Row + 1, cell.Column + 1});
    });
}

host::CommandBarsPtr CalcApplication::CommandBars() { return nullptr; }

host::WorkbookPtr CalcApplication::ThisWorkbook() {
    if (addin_.name.empty()) throw Error(kErrorApplication, u"The add-in has no workbook here");
    return std::make_shared<AddinWorkbook>(addin_);
}

void CalcApplication::OnKey(const std::u16string& /*key*/, const std::u16string& /*procedure*/) {
    FailWithoutWindow(u"Application.OnKey");
}

void CalcApplication::OnKey(const std::u16string& /*key*/) {
    FailWithoutWindow(u"Application.OnKey");
}

std::u16string CalcApplication::DecimalSeparator() {
    return Translated([&] { return calc::DecimalSeparator(document_->context()); });
}

std::u16string CalcApplication::DateText(double serial) {
    return Translated([&] { return calc::DateText(document_->context(), serial); });
}

// Without windows none of them is ever activated.
host::SubscriptionPtr CalcApplication::Connect(host::ApplicationEvents& /*sink*/) {
    return std::make_unique<host::Subscription>();
}

host::RangePtr CalcApplication::FindCell(const std::u16string& text) {
    return Ask(document_, [&]() -> host::RangePtr {
        const auto fail = [](const std::u16string& message) -> void {
            throw Error(kErrorApplication, message);
        };
        const auto parts = SplitReference(text);
        if (!parts)
            fail(u"\"" + text +
                 u"\" is no cell: write Sheet!B7, 'My Sheet'!B7, B7 or a defined name");
        if (!parts->book.empty() && !EqualIgnoringCase(parts->book, document_->FileName())) {
            fail(u"the workbook is " + document_->FileName() + u", not " + parts->book);
        }
        int sheet = document_->ActiveCell().Sheet;
        if (!parts->sheet.empty()) {
            const auto found = document_->FindSheet(parts->sheet);
            if (!found) fail(u"there is no sheet \"" + parts->sheet + u"\"");
            sheet = *found;
        }
        if (const auto area = ParseArea(parts->rest))
            return CalcRange::Make(document_, sheet, area->FirstCell());
        CalcNames ofSheet(document_, document_->Sheet(sheet));
        host::NamePtr name = ofSheet.Item(parts->rest);
        if (!name) name = CalcNames(document_).Item(parts->rest);
        if (!name) fail(u"there is no cell and no name \"" + parts->rest + u"\"; write Sheet!B7");
        document_->SetActiveCell(CellAddress(static_cast<sal_Int16>(sheet), 0, 0));
        const auto place = evaluator_->Evaluate(name->RefersTo()).place;
        if (!place) fail(u"the name \"" + parts->rest + u"\" does not stand for cells");
        return CalcRange::Make(document_, place->sheet, place->area.FirstCell());
    });
}

}  // namespace korvane::calc

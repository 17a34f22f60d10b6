// The host's top object over the office process that this code runs in.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <memory>
#include <optional>
#include <string>

#include "bindings/calc/addin_workbook.h"
#include "bindings/calc/calc_document.h"
#include "host/application.h"

namespace korvane::calc {

class Evaluator;

// All calls are made on the office's main thread, as the office wants it.
class CalcApplication : public host::Application {
public:
    // `model` is the spreadsheet document that is active. Throws korvane::Error
    // when it is none. `addin` is what ThisWorkbook answers; it raises without.
    CalcApplication(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
        const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model,
        AddinFile addin = {});
    ~CalcApplication() override;

    std::u16string Version() override;
    std::u16string Caption() override;
    std::int64_t Hwnd() override;
    void SetStatusBar(const Value& text) override;
    void SetCursor(int cursor) override;
    void SetEnableEvents(bool enable) override;
    bool ScreenUpdating() override;
    void SetScreenUpdating(bool update) override;
    // Calc would leave a formula that is written in manual mode uncalculated: so
    // the mode is only noted here, and the document keeps its own.
    int Calculation() override;
    void SetCalculation(int mode) override;
    korvane::Value Evaluate(const std::u16string& expression) override;
    std::shared_ptr<void> BeginEvaluations() override;
    ObjectPtr Selection() override;
    host::RangePtr ActiveCell() override;
    host::CommandBarsPtr CommandBars() override;
    host::WorkbookPtr ThisWorkbook() override;
    void OnKey(const std::u16string& key, const std::u16string& procedure) override;
    void OnKey(const std::u16string& key) override;
    std::u16string DecimalSeparator() override;
    std::u16string DateText(double serial) override;
    host::SubscriptionPtr Connect(host::ApplicationEvents& sink) override;

    // The cell that a text names: "Sheet!B7", "'My Sheet'!B7", "B7" on the active
    // sheet, a defined name, or a range (its first cell). Throws korvane::Error,
    // saying which part of it does not exist.
    host::RangePtr FindCell(const std::u16string& text);
    const DocumentPtr& document() const { return document_; }

private:
    AddinFile addin_;
    DocumentPtr document_;
    std::unique_ptr<Evaluator> evaluator_;
    std::optional<int> calculation_;  // as it was set
    bool screenUpdating_ = true;
};

}  // namespace korvane::calc

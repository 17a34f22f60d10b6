// The host's top object over the Calc that its user works in.
#pragma once

#include <com/sun/star/task/XStatusIndicator.hpp>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include "bindings/calc/addin_workbook.h"
#include "bindings/calc/desk/open_documents.h"
#include "host/application.h"

namespace korvane::calc {

// What of the office's desk the application hands on.
struct DeskParts {
    // The menus and toolbars.
    std::function<host::CommandBarsPtr()> commandBars;
    // Binds a key to a macro of the loader, and gives it back.
    std::function<void(const std::u16string& key, const std::u16string& procedure)> bindKey;
    std::function<void(const std::u16string& key)> releaseKey;
    std::function<host::SubscriptionPtr(host::ApplicationEvents& sink)> connect;
};

// All calls are made on the office's main thread. Members that need a document
// raise while the user works in none.
class DeskApplication : public host::Application {
public:
    // `addin` is the file that ThisWorkbook stands for. The parts may be empty:
    // their members raise then, and there are no bars.
    DeskApplication(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
        AddinFile addin, DeskParts parts);
    ~DeskApplication() override;

    std::u16string Version() override;
    std::u16string Caption() override;
    std::int64_t Hwnd() override;
    void SetStatusBar(const Value& text) override;
    void SetCursor(int cursor) override;
    void SetEnableEvents(bool enable) override;
    bool ScreenUpdating() override;
    void SetScreenUpdating(bool update) override;
    // As in the office without windows, the mode is only noted.
    int Calculation() override;
    void SetCalculation(int mode) override;
    korvane::Value Evaluate(const std::u16string& expression) override;
    std::shared_ptr<void> BeginEvaluations() override;
    // Null while no spreadsheet is open.
    ObjectPtr Selection() override;
    host::RangePtr ActiveCell() override;
    host::CommandBarsPtr CommandBars() override;
    host::WorkbookPtr ThisWorkbook() override;
    void OnKey(const std::u16string& key, const std::u16string& procedure) override;
    void OnKey(const std::u16string& key) override;
    std::u16string DecimalSeparator() override;
    std::u16string DateText(double serial) override;
    host::SubscriptionPtr Connect(host::ApplicationEvents& sink) override;

    OpenDocuments& documents() { return documents_; }

private:
    // The one that the user works in. Raises when there is none.
    OpenDocument& Active();
    // The cells that the text of a reference means in another open workbook; null
    // for any other text.
    host::RangePtr CellsElsewhere(const std::u16string& expression, const OpenDocument& here);

    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
    AddinFile addin_;
    DeskParts parts_;
    OpenDocuments documents_;
    com::sun::star::uno::Reference<com::sun::star::task::XStatusIndicator> status_;
    std::optional<int> calculation_;  // as it was set
    DocumentPtr still_;               // not repainted now
    std::shared_ptr<bool> eventsOn_ = std::make_shared<bool>(true);
};

}  // namespace korvane::calc

// The scripted host's objects. Each is a light handle onto the model; every
// member begins with ScriptedHost::Enter.
#pragma once

#include "bindings/scripted/scripted_host.h"
#include "host/application.h"
#include "host/name.h"
#include "host/range.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane::scripted {

class ScriptedApplication : public host::Application {
public:
    explicit ScriptedApplication(ScriptedHost& host) : host_(host), counted_(host) {}
    ScriptedApplication(const ScriptedApplication&) = delete;
    ScriptedApplication& operator=(const ScriptedApplication&) = delete;
    ~ScriptedApplication() override { host_.keys.clear(); }

    std::u16string Version() override;
    std::u16string Caption() override;
    std::int64_t Hwnd() override;
    void SetStatusBar(const korvane::Value& text) override;
    void SetCursor(int cursor) override;
    void SetEnableEvents(bool enable) override;
    bool ScreenUpdating() override;
    void SetScreenUpdating(bool update) override;
    int Calculation() override;
    void SetCalculation(int mode) override;
    korvane::Value Evaluate(const std::u16string& expression) override;
    ObjectPtr Selection() override;
    host::RangePtr ActiveCell() override;
    host::CommandBarsPtr CommandBars() override;
    host::WorkbookPtr ThisWorkbook() override;
    void OnKey(const std::u16string& key, const std::u16string& procedure) override;
    void OnKey(const std::u16string& key) override;
    std::u16string DecimalSeparator() override;
    std::u16string DateText(double serial) override;
    host::SubscriptionPtr Connect(host::ApplicationEvents& sink) override;

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
};

class ScriptedWorkbook : public host::Workbook {
public:
    ScriptedWorkbook(ScriptedHost& host, BookPtr book)
        : host_(host), counted_(host), book_(std::move(book)) {}

    std::u16string Name() override;
    std::u16string Path() override;
    host::NamesPtr Names() override;
    void Activate() override;

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    BookPtr book_;
};

class ScriptedWorksheet : public host::Worksheet {
public:
    ScriptedWorksheet(ScriptedHost& host, BookPtr book, Sheet* sheet)
        : host_(host), counted_(host), book_(std::move(book)), sheet_(sheet) {}

    std::u16string Name() override;
    host::WorkbookPtr Parent() override;
    host::NamesPtr Names() override;
    bool ProtectContents() override;
    void Activate() override;

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    BookPtr book_;
    Sheet* sheet_;
};

class ScriptedName : public host::Name {
public:
    // `sheet` is null for a name of the workbook.
    ScriptedName(ScriptedHost& host, BookPtr book, const Sheet* sheet, DefinedName name)
        : host_(host),
          counted_(host),
          book_(std::move(book)),
          sheet_(sheet),
          name_(std::move(name)) {}

    std::u16string Name_() override;
    std::u16string RefersTo() override;

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    BookPtr book_;
    const Sheet* sheet_;
    DefinedName name_;
};

class ScriptedNames : public host::Names {
public:
    ScriptedNames(ScriptedHost& host, BookPtr book, const Sheet* sheet)
        : host_(host), counted_(host), book_(std::move(book)), sheet_(sheet) {}

    host::NamePtr Item(std::u16string_view text) override;

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    BookPtr book_;
    const Sheet* sheet_;
};

class ScriptedRange : public host::Range {
public:
    ScriptedRange(ScriptedHost& host, Place place)
        : host_(host), counted_(host), place_(std::move(place)) {}

    korvane::Value Formula() override;
    void SetFormula(const std::u16string& formula) override;
    korvane::Value FormulaArray() override;
    void SetFormulaArray(const std::u16string& formula) override;
    bool HasArray() override;
    host::RangePtr CurrentArray() override;
    korvane::Value Value() override;
    std::int64_t CountLarge() override;
    korvane::Value Text() override;
    std::u16string Address(const host::AddressForm& form) override;
    host::WorksheetPtr Worksheet() override;
    host::NamePtr Name() override;
    host::RangePtr EntireRow() override;
    host::RangePtr EntireColumn() override;
    korvane::Value Hidden() override;
    host::InteriorPtr Interior() override;
    void Select() override;
    void Activate() override;

private:
    enum class Entire { kNo, kRow, kColumn };

    void Enter(const char* member, std::u16string_view detail = {}) const;
    const Content* FirstContent() const;  // of the first cell; null when it is empty
    bool IsPartOfLargerArray() const;
    // The whole rows or columns `area` of this range.
    host::RangePtr Widened(const Area& area, Entire entire) const;
    void Write(const std::u16string& formula, bool asArray);
    template <typename Get>
    korvane::Value OfCells(Get get) const;

    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    Place place_;
    Entire entire_ = Entire::kNo;
    Area origin_;  // of an entire row or column: the cells that it was asked of
};

class ScriptedInterior : public host::Interior {
public:
    ScriptedInterior(ScriptedHost& host, Place place)
        : host_(host), counted_(host), place_(std::move(place)) {}

    korvane::Value ColorIndex() override;
    void SetColorIndex(const korvane::Value& index) override;
    korvane::Value Color() override;
    void SetColor(double color) override;

private:
    void Enter(const char* member) const;
    // The fill of all cells; nothing when they differ.
    std::optional<Fill> Uniform() const;

    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    Place place_;
};

// Raises as every access to a closed workbook does.
void RequireOpen(const Book& book);

// The displayed text of a value that has none of its own.
std::u16string PlainText(const Value& value);

}  // namespace korvane::scripted

#include "bindings/lone/lone_host.h"

#include "base/error.h"
#include "base/literal.h"
#include "base/text.h"
#include "host/command_bars.h"
#include "host/constants.h"
#include "host/name.h"
#include "host/range.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane::lone {
namespace {

[[noreturn]] void Missing() {
    throw Error(kErrorApplication, u"A lone cell has no workbook around it");
}

// A handle that leads to an object without owning it.
template <typename T>
std::shared_ptr<T> HandleOf(T& object) {
    return std::shared_ptr<T>(std::shared_ptr<void>(), &object);
}

class NoNames : public host::Names {
public:
    explicit NoNames(std::int64_t& calls) : calls_(calls) {}
    host::NamePtr Item(std::u16string_view /*text*/) override {
        ++calls_;
        return nullptr;
    }

private:
    std::int64_t& calls_;
};

}  // namespace

class LoneHost::Parts {
public:
    class Book : public host::Workbook {
    public:
        explicit Book(Parts& parts) : parts_(parts) {}
        std::u16string Name() override { return ++parts_.calls, u"Book1"; }
        std::u16string Path() override { return ++parts_.calls, u""; }
        host::NamesPtr Names() override {
            return ++parts_.calls, HandleOf<host::Names>(parts_.names);
        }
        void Activate() override { ++parts_.calls; }

    private:
        Parts& parts_;
    };

    class Sheet : public host::Worksheet {
    public:
        explicit Sheet(Parts& parts) : parts_(parts) {}
        std::u16string Name() override { return ++parts_.calls, u"Sheet1"; }
        host::WorkbookPtr Parent() override {
            return ++parts_.calls, HandleOf<host::Workbook>(parts_.book);
        }
        host::NamesPtr Names() override {
            return ++parts_.calls, HandleOf<host::Names>(parts_.names);
        }
        bool ProtectContents() override { return ++parts_.calls, false; }
        void Activate() override { ++parts_.calls; }

    private:
        Parts& parts_;
    };

    class Cell : public host::Range {
    public:
        explicit Cell(Parts& parts) : parts_(parts) {}
        korvane::Value Formula() override { return ++parts_.calls, korvane::Value(parts_.formula); }
        void SetFormula(const std::u16string& /*formula*/) override { Missing(); }
        korvane::Value FormulaArray() override { return Formula(); }
        void SetFormulaArray(const std::u16string& /*formula*/) override { Missing(); }
        bool HasArray() override { return ++parts_.calls, false; }
        host::RangePtr CurrentArray() override { Missing(); }
        korvane::Value Value() override { return ++parts_.calls, korvane::Value(); }
        std::int64_t CountLarge() override { return ++parts_.calls, 1; }
        korvane::Value Text() override {
            return ++parts_.calls, korvane::Value(korvane::Value::Null{});
        }
        std::u16string Address(const host::AddressForm& form) override {
            ++parts_.calls;
            if (form.External) return u"[Book1]Sheet1!$A$1";
            return form.RowAbsolute ? u"$A$1" : u"A1";
        }
        host::WorksheetPtr Worksheet() override {
            return ++parts_.calls, HandleOf<host::Worksheet>(parts_.sheet);
        }
        host::NamePtr Name() override { return ++parts_.calls, nullptr; }
        host::RangePtr EntireRow() override { return ++parts_.calls, HandleOf<host::Range>(*this); }
        host::RangePtr EntireColumn() override { return EntireRow(); }
        korvane::Value Hidden() override { return ++parts_.calls, korvane::Value(false); }
        host::InteriorPtr Interior() override { Missing(); }
        void Select() override { ++parts_.calls; }
        void Activate() override { ++parts_.calls; }

    private:
        Parts& parts_;
    };

    class Application : public host::Application {
    public:
        explicit Application(Parts& parts) : parts_(parts) {}
        std::u16string Version() override { return ++parts_.calls, u"0.0"; }
        std::u16string Caption() override { return ++parts_.calls, u""; }
        std::int64_t Hwnd() override { return ++parts_.calls, 0; }
        void SetStatusBar(const korvane::Value& /*text*/) override { ++parts_.calls; }
        void SetCursor(int /*cursor*/) override { ++parts_.calls; }
        void SetEnableEvents(bool /*enable*/) override { ++parts_.calls; }
        bool ScreenUpdating() override { return ++parts_.calls, true; }
        void SetScreenUpdating(bool /*update*/) override { ++parts_.calls; }
        int Calculation() override { return ++parts_.calls, host::xlCalculationAutomatic; }
        void SetCalculation(int /*mode*/) override { ++parts_.calls; }
        korvane::Value Evaluate(const std::u16string& expression) override {
            ++parts_.calls;
            std::u16string_view text = expression;
            if (StartsWith(text, u"=")) text.remove_prefix(1);
            if (auto literal = LiteralValue(TrimBlanks(text))) return std::move(*literal);
            return korvane::Value(ErrorCode::kName);
        }
        ObjectPtr Selection() override { return ActiveCell(); }
        host::RangePtr ActiveCell() override {
            return ++parts_.calls, HandleOf<host::Range>(parts_.cell);
        }
        host::CommandBarsPtr CommandBars() override { Missing(); }
        host::WorkbookPtr ThisWorkbook() override {
            return ++parts_.calls, HandleOf<host::Workbook>(parts_.book);
        }
        void OnKey(const std::u16string& /*key*/, const std::u16string& /*procedure*/) override {
            Missing();
        }
        void OnKey(const std::u16string& /*key*/) override { Missing(); }
        std::u16string DecimalSeparator() override { return ++parts_.calls, u"."; }
        std::u16string DateText(double /*serial*/) override { Missing(); }
        host::SubscriptionPtr Connect(host::ApplicationEvents& /*sink*/) override { Missing(); }

    private:
        Parts& parts_;
    };

    std::int64_t calls = 0;
    std::u16string formula;
    NoNames names{calls};
    Book book{*this};
    Sheet sheet{*this};
    Cell cell{*this};
    Application application{*this};
};

LoneHost::LoneHost() : parts_(std::make_unique<Parts>()) {}
LoneHost::~LoneHost() = default;

void LoneHost::SetFormula(std::u16string formula) { parts_->formula = std::move(formula); }
host::Application& LoneHost::application() { return parts_->application; }
host::RangePtr LoneHost::cell() { return HandleOf<host::Range>(parts_->cell); }
std::int64_t LoneHost::calls() const { return parts_->calls; }

}  // namespace korvane::lone

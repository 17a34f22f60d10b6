// Runs inside the office and tells the benchmark what it would cost the office
// alone: the texts of a formula's parts, evaluated by the same calls into Calc and
// with nothing around them.
#include <time.h>

#include <com/sun/star/awt/Key.hpp>
#include <com/sun/star/awt/KeyEvent.hpp>
#include <com/sun/star/awt/KeyModifier.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XArrayFormulaTokens.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XSheetOperation.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/text/XTextRange.hpp>
#include <com/sun/star/ui/XAcceleratorConfiguration.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "apps/report/exploration.h"
#include "base/text.h"
#include "bindings/calc/calc_application.h"
#include "bindings/calc/desk/command_table.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/token_shape.h"
#include "bindings/calc/uno_text.h"
#include "formula/element.h"
#include "support/office_orders.h"

namespace korvane::bench {
namespace {

namespace css = com::sun::star;
using calc::CellAddress;
using calc::Tokens;
using calc::ToOUString;
using calc::ToText;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using Context = Reference<css::uno::XComponentContext>;
// Processor time of the main thread, which other work on the machine hardly disturbs;
// in microseconds.
double Now() {
    timespec time{};
    ::clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) * 1e6 + static_cast<double>(time.tv_nsec) / 1e3;
}

std::string Microseconds(double since) { return std::to_string(Now() - since); }

// What Calc has to do for one part.
struct Asked {
    std::u16string text;
    // Formulas that are written one after the other, and over how many cells: where
    // it is, how large, what value; none when the text alone says it all.
    std::vector<std::pair<Tokens, int>> written;
    css::uno::Reference<css::table::XCell> cell;  // read in the end; a reference's first
};

class Failures : public ErrorReporter {
public:
    void Report(const char16_t* /*module*/, const char16_t* /*procedure*/, const Error& /*error*/,
                bool /*isEntryPoint*/) override {}
};

class BareCalc {
public:
    BareCalc(Context context, Reference<css::frame::XModel> model)
        : application_(context, model),
          document_(*application_.document()),
          shape_(document_.formulas().codes()) {}

    calc::CellRangeRef CellsAt(const std::string& address) const {
        return document_.Sheet(0)->getCellRangeByName(ToOUString(ToUtf16(address)));
    }
    // Explores as the add-in does, but for its window. "microseconds parts"
    std::string Explore(const std::string& cell) {
        const auto found = application_.FindCell(ToUtf16(cell));
        found->Activate();
        Failures failures;
        CElementOptions options(application_, failures);
        options.bEveryFunction = true;
        options.rngRootCell = found;
        CElement root;
        const auto began = Now();
        const bool isGood = root.bInitRoot(options);
        const std::string time = Microseconds(began);
        if (!isGood) return "failed";
        asked_.clear();
        for (const auto& child : PartOf(root).children) Prepare(child);
        return time + " " + std::to_string(asked_.size());
    }

    // Evaluates the parts of the cell explored last.
    std::string Evaluate() {
        calc::Silence silence(document_);
        const auto began = Now();
        for (const Asked& asked : asked_) {
            document_.formulas().Parse(asked.text, at_);
            for (const auto& [tokens, columns] : asked.written) Write(tokens, columns, silence);
            if (asked.cell.is()) Read(asked.cell);
        }
        const std::string time = Microseconds(began);
        return time;
    }

private:
    void Prepare(const PartReport& part) {
        Asked asked;
        asked.text = part.formula;
        const Tokens read = document_.formulas().Parse(part.formula, at_);
        const Tokens tokens = shape_.Settled(read, at_);
        const bool isPlain = tokens.getLength() == 1;
        const auto value = application_.Evaluate(u"=" + part.formula);
        const auto range = std::dynamic_pointer_cast<host::Range>(value.AsObject());
        if (!isPlain && !shape_.IsNeverReference(tokens)) {
            asked.written.emplace_back(
                Ask(3, u"IFERROR(CELL(\"ADDRESS\"," + part.formula + u"),0)", part.formula), 3);
        }
        if (range) {
            const auto area = ParseArea(range->Address(host::kRelative));
            asked.cell = document_.Cells(0, area->FirstCell())->getCellByPosition(0, 0);
        } else if (!isPlain) {
            if (!shape_.IsNeverArray(tokens)) {
                asked.written.emplace_back(Ask(2, {}, part.formula), 2);
            }
            asked.written.emplace_back(tokens, 1);
        }
        asked_.push_back(std::move(asked));
        for (const auto& child : part.children) Prepare(child);
    }
    // What is asked about an expression: something first, perhaps, and its size.
    Tokens Ask(int count, const std::u16string& first, const std::u16string& text) const {
        const std::u16string question =
            (count == 3 ? u"CHOOSE({1,2,3}," + first : u"CHOOSE({1,2}") + u",IFERROR(ROWS(" + text +
            u"),1),IFERROR(COLUMNS(" + text + u"),1))";
        return shape_.Settled(document_.formulas().Parse(question, at_), at_);
    }
    void Write(const Tokens& tokens, int columns, calc::Silence& silence) const {
        constexpr sal_Int32 kColumn = 10;
        constexpr sal_Int32 kRow = 1048575;
        const auto cells =
            document_.Sheet(0)->getCellRangeByPosition(kColumn, kRow, kColumn + columns - 1, kRow);
        silence.BeforeWrite();
        Reference<css::sheet::XArrayFormulaTokens>(cells, UNO_QUERY_THROW)->setArrayTokens(tokens);
        if (columns > 1) {
            Reference<css::sheet::XCellRangeData>(cells, UNO_QUERY_THROW)->getDataArray();
        } else {
            Read(cells->getCellByPosition(0, 0));
        }
        silence.BeforeWrite();
        namespace Flags = css::sheet::CellFlags;
        Reference<css::sheet::XSheetOperation>(cells, UNO_QUERY_THROW)
            ->clearContents(Flags::VALUE | Flags::DATETIME | Flags::STRING | Flags::FORMULA);
    }
    static void Read(const Reference<css::table::XCell>& cell) {
        cell->getValue();
        cell->getError();
        Reference<css::text::XTextRange>(cell, UNO_QUERY_THROW)->getString();
    }

    calc::CalcApplication application_;
    calc::CalcDocument& document_;
    calc::TokenShape shape_;
    const CellAddress at_{0, 4, 20};
    std::vector<Asked> asked_;
};

class Answers {
public:
    explicit Answers(Context context) : context_(std::move(context)) {}

    std::string To(const std::string& line) {
        try {
            const auto blank = line.find(' ');
            const std::string order = line.substr(0, blank);
            const std::string with = blank == std::string::npos ? "" : line.substr(blank + 1);
            if (order == "ready") return Model().is() ? "yes" : "no";
            if (order == "key") return IsKeyBound() ? "yes" : "no";
            if (order == "select") return Select(with);
            if (order == "explore") return Bare().Explore(with);
            if (order == "evaluate") return Bare().Evaluate();
            return "what?";
        } catch (const css::uno::Exception& error) {
            return "failed: " + ToUtf8(ToText(error.Message));
        } catch (const Error& error) {
            return "failed: " + ToUtf8(error.description());
        }
    }

private:
    Reference<css::frame::XModel> Model() const {
        const auto frame = css::frame::Desktop::create(context_)->getCurrentFrame();
        const auto controller = frame.is() ? frame->getController() : nullptr;
        return controller.is() ? controller->getModel() : nullptr;
    }
    BareCalc& Bare() {
        if (!bare_) bare_ = std::make_unique<BareCalc>(context_, Model());
        return *bare_;
    }
    // The add-in has started: Ctrl+Q is its own.
    bool IsKeyBound() const {
        const Reference<css::ui::XAcceleratorConfiguration> keys(
            calc::SpreadsheetModule(context_)->getShortCutManager(), UNO_QUERY_THROW);
        css::awt::KeyEvent key;
        key.KeyCode = css::awt::Key::Q;
        key.Modifiers = css::awt::KeyModifier::MOD1;
        for (const auto& bound : keys->getAllKeyEvents()) {
            if (bound.KeyCode == key.KeyCode && bound.Modifiers == key.Modifiers) {
                return calc::IsCommandUrl(ToText(keys->getCommandByKeyEvent(bound)));
            }
        }
        return false;
    }
    std::string Select(const std::string& address) {
        css::uno::Any cells;
        cells <<= Bare().CellsAt(address);
        Reference<css::view::XSelectionSupplier>(Model()->getCurrentController(), UNO_QUERY_THROW)
            ->select(cells);
        return "done";
    }

    Context context_;
    std::unique_ptr<BareCalc> bare_;
};

}  // namespace
}  // namespace korvane::bench

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* korvane_bench_bare_calc(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
    using namespace korvane::bench;
    return korvane::test::MakeOrderJob(context, u"org.korvane.bench.BareCalc",
                                       [answers = std::make_shared<Answers>(Context(context))](
                                           const std::string& line) { return answers->To(line); });
}

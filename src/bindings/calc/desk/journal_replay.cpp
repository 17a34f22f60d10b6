#include "bindings/calc/desk/journal_replay.h"

#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/sheet/XArrayFormulaRange.hpp>
#include <com/sun/star/table/CellContentType.hpp>

#include "base/attempt.h"
#include "bindings/calc/calc_range.h"
#include "bindings/calc/silence.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

bool IsWithinSheet(const CellBlock& block) {
    return block.StartRow <= block.EndRow && block.StartColumn <= block.EndColumn &&
           block.EndRow < kSheetRows && block.EndColumn < kSheetColumns;
}

bool PutBackFill(const CalcDocument& document, const FillNote& note) {
    const auto sheet = document.FindSheet(note.sheet);
    if (!sheet) return false;
    bool any = false;
    for (const auto& part : note.parts) {
        CellBlock block = part.block;
        block.Sheet = static_cast<sal_Int16>(*sheet);
        if (!IsWithinSheet(block) || IsProtected(document, block.Sheet)) continue;
        for (const CellBlock& same : BlocksWith(CellsAt(document, block), note.written)) {
            WriteFill(document, same, part.before);
            any = true;
        }
    }
    return any;
}

// The formula as the office writes it, or as the add-in would read it.
bool Holds(const DocumentPtr& document, const CellAddress& at,
           const Reference<css::table::XCell>& cell, const FormulaNote& note) {
    if (ToText(cell->getFormula()) == note.shown && !note.shown.empty()) return true;
    if (note.written.empty()) return false;
    const korvane::Value formula =
        CalcRange::Make(document, at.Sheet, {at.Row + 1, at.Column + 1, at.Row + 1, at.Column + 1})
            ->Formula();
    const auto* const text = formula.Text();
    return text != nullptr && *text == note.written;
}

bool PutBackFormula(const DocumentPtr& document, const FormulaNote& note) {
    const auto sheet = document->FindSheet(note.sheet);
    if (!sheet || note.row >= kSheetRows || note.column >= kSheetColumns) return false;
    const CellAddress at(static_cast<sal_Int16>(*sheet), note.column, note.row);
    const auto cell = document->Sheet(*sheet)->getCellByPosition(note.column, note.row);
    if (ToText(cell->getFormula()) == note.before || !Holds(document, at, cell, note)) return false;
    Silence silence(*document);
    silence.BeforeWrite();
    const bool isArray =
        note.beforeIsFormula && note.before.starts_with(u'{') && note.before.ends_with(u'}');
    if (isArray) {
        Reference<css::sheet::XArrayFormulaRange>(cell, UNO_QUERY_THROW)
            ->setArrayFormula(ToOUString(note.before.substr(1, note.before.size() - 2)));
    } else {
        cell->setFormula(ToOUString(note.before));
    }
    cell->getValue();
    if (!note.hadOwnFormat) {
        silence.BeforeWrite();
        Reference<css::beans::XPropertyState>(cell, UNO_QUERY_THROW)
            ->setPropertyToDefault(ToOUString(u"NumberFormat"));
    }
    return true;
}

}  // namespace

bool PutBackWhatDied(const DocumentPtr& document, const DeadJournals& journals) noexcept {
    bool any = false;
    Suppressed([&] {
        const std::u16string url = ToText(document->model()->getURL());
        // A file that is only looked at stays as it is until somebody can mend it.
        const bool canBeSaved = !document->IsReadOnly();
        for (const auto& found : journals.Of(url)) {
            std::set<long> done;
            // The last change first: what was written later stands on what was there.
            const auto take = [&](const auto& lines, const auto& putBack) {
                for (auto line = lines.rbegin(); line != lines.rend(); ++line) {
                    bool wasPutBack = false;
                    Suppressed([&] { wasPutBack = putBack(line->note); });
                    any = any || wasPutBack;
                    if (wasPutBack || !url.empty()) done.insert(line->number);
                }
            };
            take(found.content.formulas, [&](const FormulaNote& note) {
                return Translated([&] { return PutBackFormula(document, note); });
            });
            take(found.content.fills, [&](const FillNote& note) {
                return Translated([&] { return PutBackFill(*document, note); });
            });
            if (!done.empty() && canBeSaved) DeadJournals::Forget(found.file, done);
        }
        if (any && canBeSaved) document->modifiable()->setModified(true);
    });
    return any;
}

}  // namespace korvane::calc

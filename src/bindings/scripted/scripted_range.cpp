#include <algorithm>

#include "base/error.h"
#include "base/number.h"
#include "base/text.h"
#include "bindings/scripted/objects.h"

namespace korvane::scripted {
namespace {

// More cells than a block's values are worth; the host runs out of memory too.
constexpr std::int64_t kMostCells = 10'000'000;

bool Inside(const Area& area, std::int32_t row, std::int32_t column) {
    return row >= area.top && row <= area.bottom && column >= area.left && column <= area.right;
}

// Calls `visit(row, column, cell)` for the cells of an area that hold anything.
template <typename Visit>
void ForEachCell(Sheet& sheet, const Area& area, Visit visit) {
    if (area.Count() <= static_cast<std::int64_t>(sheet.cells.size())) {
        for (std::int32_t row = area.top; row <= area.bottom; ++row) {
            for (std::int32_t column = area.left; column <= area.right; ++column) {
                if (Cell* cell = sheet.Find(row, column)) visit(row, column, *cell);
            }
        }
        return;
    }
    for (auto& [key, cell] : sheet.cells) {
        const auto row = static_cast<std::int32_t>(key >> 32);
        const auto column = static_cast<std::int32_t>(key & 0xFFFFFFFF);
        if (Inside(area, row, column)) visit(row, column, cell);
    }
}

Value FormulaOf(const Content& content) {
    return Value(content.formula ? *content.formula : PlainText(content.value));
}

Value TextOf(const Content& content) {
    return content.text ? *content.text : Value(PlainText(content.value));
}

// The one answer for the rows or columns first to last of which some are hidden.
Value AllHidden(const std::set<std::int32_t>& hidden, std::int32_t first, std::int32_t last) {
    const auto count = std::distance(hidden.lower_bound(first), hidden.upper_bound(last));
    if (count == 0) return Value(false);
    return count == last - first + 1 ? Value(true) : Value(Value::Null{});
}

}  // namespace

std::u16string PlainText(const Value& value) {
    if (const auto* text = value.Text()) return *text;
    if (const auto* number = value.Number()) return NumberText(*number);
    if (const auto* flag = value.Boolean()) return *flag ? u"True" : u"False";
    if (const auto* code = value.AsError()) return ErrorName(*code);
    return {};
}

void ScriptedRange::Enter(const char* member, std::u16string_view detail) const {
    host_.Enter(member, detail);
    RequireOpen(*place_.book);
}

const Content* ScriptedRange::FirstContent() const {
    const Cell* cell = place_.sheet->Find(place_.area.top, place_.area.left);
    return cell ? &cell->content : nullptr;
}

// The value of the one cell, or the array of a block.
template <typename Get>
korvane::Value ScriptedRange::OfCells(Get get) const {
    const Area& area = place_.area;
    static const Content kEmpty;
    if (area.IsCell()) {
        const Content* content = FirstContent();
        return get(content ? *content : kEmpty);
    }
    if (area.Count() > kMostCells) throw Error(kErrorOutOfMemory, u"The block is too large");
    Array array;
    array.rows = static_cast<std::size_t>(std::int64_t{area.bottom} - area.top + 1);
    array.columns = static_cast<std::size_t>(std::int64_t{area.right} - area.left + 1);
    array.cells.assign(array.rows * array.columns, get(kEmpty));
    ForEachCell(*place_.sheet, area, [&](std::int32_t row, std::int32_t column, Cell& cell) {
        array.cells[static_cast<std::size_t>(row - area.top) * array.columns +
                    static_cast<std::size_t>(column - area.left)] = get(cell.content);
    });
    return korvane::Value(std::move(array));
}

korvane::Value ScriptedRange::Formula() {
    Enter("Range.Formula");
    return OfCells(FormulaOf);
}

void ScriptedRange::SetFormula(const std::u16string& formula) {
    Enter("Range.SetFormula", formula);
    Write(formula, false);
}

korvane::Value ScriptedRange::FormulaArray() {
    Enter("Range.FormulaArray");
    const Content* content = FirstContent();
    return content ? FormulaOf(*content) : korvane::Value(u"");
}

void ScriptedRange::SetFormulaArray(const std::u16string& formula) {
    Enter("Range.SetFormulaArray", formula);
    Write(formula, true);
}

bool ScriptedRange::IsPartOfLargerArray() const {
    const Content* content = FirstContent();
    return content && content->hasArray && content->currentArray &&
           !content->currentArray->IsCell();
}

void ScriptedRange::Write(const std::u16string& formula, bool asArray) {
    if (!place_.area.IsCell()) throw Error(kErrorApplication, u"A block cannot be written");
    if (place_.sheet->isProtected) throw Error(kErrorApplication, u"The sheet is protected");
    if (IsPartOfLargerArray())
        throw Error(kErrorApplication, u"A part of an array cannot be changed");
    Cell& cell = place_.sheet->At(place_.area.top, place_.area.left);
    const auto isOf = [&](const Content& content) {
        return content.hasArray == asArray && *FormulaOf(content).Text() == formula;
    };
    if (cell.original && isOf(*cell.original)) {
        // The cell is put back, its value and its displayed text included.
        cell.content = std::move(*cell.original);
        cell.original.reset();
        return;
    }
    Content content;
    content.hasArray = asArray;
    if (!StartsWith(formula, u"=")) {
        content.value = korvane::Value(formula);
    } else {
        content.formula = formula;
        // The formula that stands here already gives what the cell has, unless
        // the document answers otherwise.
        content.value = !isOf(cell.content) || host_.AnswersWritten(formula)
                            ? host_.EvaluateWritten(formula)
                            : cell.content.value;
    }
    if (!cell.original) cell.original = std::move(cell.content);
    cell.content = std::move(content);
}

bool ScriptedRange::HasArray() {
    Enter("Range.HasArray");
    const Content* content = FirstContent();
    return content && content->hasArray;
}

host::RangePtr ScriptedRange::CurrentArray() {
    Enter("Range.CurrentArray");
    const Content* content = FirstContent();
    if (!content || !content->hasArray) throw Error(kErrorApplication, u"No array formula here");
    return host_.RangeAt(
        {place_.book, place_.sheet, content->currentArray.value_or(place_.area.FirstCell())});
}

korvane::Value ScriptedRange::Value() {
    Enter("Range.Value");
    return OfCells([](const Content& content) { return content.value; });
}

std::int64_t ScriptedRange::CountLarge() {
    Enter("Range.CountLarge");
    return place_.area.Count();
}

korvane::Value ScriptedRange::Text() {
    Enter("Range.Text");
    const Area& area = place_.area;
    if (area.IsCell()) {
        const Content* content = FirstContent();
        return content ? TextOf(*content) : korvane::Value(u"");
    }
    // One text when all cells show it, else none.
    std::optional<std::u16string> common;
    std::int64_t seen = 0;
    bool differ = false;
    ForEachCell(*place_.sheet, area, [&](std::int32_t, std::int32_t, Cell& cell) {
        const korvane::Value text = TextOf(cell.content);
        ++seen;
        const std::u16string shown = text.IsNull() ? u"" : PlainText(text);
        differ = differ || text.IsNull() || (common && *common != shown);
        common = shown;
    });
    if (seen < area.Count() && common && !common->empty()) differ = true;
    return differ ? korvane::Value(korvane::Value::Null{}) : korvane::Value(common.value_or(u""));
}

std::u16string ScriptedRange::Address(const host::AddressForm& form) {
    Enter("Range.Address");
    const std::u16string area = AreaText(place_.area, form.RowAbsolute, form.ColumnAbsolute);
    return form.External ? SheetPrefix(place_.book->name, place_.sheet->name) + area : area;
}

host::WorksheetPtr ScriptedRange::Worksheet() {
    Enter("Range.Worksheet");
    return std::make_shared<ScriptedWorksheet>(host_, place_.book, place_.sheet);
}

host::NamePtr ScriptedRange::Name() {
    Enter("Range.Name");
    for (const Sheet* scope :
         {static_cast<const Sheet*>(place_.sheet), static_cast<const Sheet*>(nullptr)}) {
        for (const auto& [key, name] : scope ? scope->names : place_.book->names) {
            const auto target =
                FindPlace(host_.model(), std::u16string_view(name.refersTo).substr(1));
            if (target && target->sheet == place_.sheet && target->area == place_.area) {
                return std::make_shared<ScriptedName>(host_, place_.book, scope, name);
            }
        }
    }
    return nullptr;
}

host::RangePtr ScriptedRange::EntireRow() {
    Enter("Range.EntireRow");
    Area area = place_.area;
    area.left = 1;
    area.right = kSheetColumns;
    return Widened(area, Entire::kRow);
}

host::RangePtr ScriptedRange::EntireColumn() {
    Enter("Range.EntireColumn");
    Area area = place_.area;
    area.top = 1;
    area.bottom = kSheetRows;
    return Widened(area, Entire::kColumn);
}

host::RangePtr ScriptedRange::Widened(const Area& area, Entire entire) const {
    auto range = std::make_shared<ScriptedRange>(host_, Place{place_.book, place_.sheet, area});
    range->entire_ = entire;
    range->origin_ = place_.area;
    return range;
}

korvane::Value ScriptedRange::Hidden() {
    Enter("Range.Hidden");
    if (entire_ == Entire::kNo) throw Error(kErrorApplication, u"Only whole rows or columns hide");
    const bool rows = entire_ == Entire::kRow;
    std::set<std::int32_t> hidden = rows ? place_.sheet->hiddenRows : place_.sheet->hiddenColumns;
    ForEachCell(*place_.sheet, origin_, [&](std::int32_t row, std::int32_t column, Cell& cell) {
        if (rows ? cell.hiddenRow : cell.hiddenColumn) hidden.insert(rows ? row : column);
    });
    return rows ? AllHidden(hidden, origin_.top, origin_.bottom)
                : AllHidden(hidden, origin_.left, origin_.right);
}

host::InteriorPtr ScriptedRange::Interior() {
    Enter("Range.Interior");
    return std::make_shared<ScriptedInterior>(host_, place_);
}

void ScriptedRange::Select() {
    Enter("Range.Select");
    if (host_.model().activeSheet != place_.sheet) {
        throw Error(kErrorApplication, u"The sheet is not the active one");
    }
    host_.selection = place_.area;
    host_.selectedObject.clear();
    host_.model().activeCell = place_.area.FirstCell();
}

void ScriptedRange::Activate() {
    Enter("Range.Activate");
    if (host_.model().activeSheet != place_.sheet) {
        throw Error(kErrorApplication, u"The sheet is not the active one");
    }
    host_.model().activeCell = place_.area.FirstCell();
}

}  // namespace korvane::scripted

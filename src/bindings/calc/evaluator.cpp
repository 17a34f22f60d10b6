#include "bindings/calc/evaluator.h"

#include <algorithm>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <string_view>

#include "base/number.h"
#include "base/text.h"
#include "bindings/calc/cell_values.h"
#include "bindings/calc/name_expansion.h"
#include "bindings/calc/table_references.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// The name that stands in a frame for the expression put there.
constexpr std::u16string_view kHole = u"korvane_hole";

}  // namespace

Evaluator::Evaluator(CalcDocument& document)
    : document_(document), shape_(document.formulas().codes()) {
    // Only about the cells, never their values: those of a reference to whole
    // columns would be read one by one.
    referenceFrames_ = {Frame(u"IFERROR(CELL(\"SHEET\",korvane_hole),0)"),
                        Frame(u"IFERROR(CELL(\"ROW\",korvane_hole),0)"),
                        Frame(u"IFERROR(CELL(\"COL\",korvane_hole),0)"),
                        Frame(u"IFERROR(ROWS(korvane_hole),1)"),
                        Frame(u"IFERROR(COLUMNS(korvane_hole),1)")};
    sizeFrames_ = {referenceFrames_[3], referenceFrames_[4]};
    chooseFive_ = Frame(
        u"CHOOSE({1,2,3,4,5},korvane_hole,korvane_hole,korvane_hole,korvane_hole,korvane_hole)");
    chooseTwo_ = Frame(u"CHOOSE({1,2},korvane_hole,korvane_hole)");
}

Tokens Evaluator::Frame(std::u16string_view text) const {
    return document_.formulas().Parse(text, CellAddress(0, 0, 0));
}

// The frame with the parts in its holes, one after the other; the last part also
// fills the holes that are left.
Tokens Evaluator::Insert(const Tokens& frame, const std::vector<Tokens>& parts) const {
    std::vector<Token> out;
    std::size_t next = 0;
    rtl::OUString name;
    for (const auto& token : frame) {
        if (token.OpCode == document_.formulas().codes().bad && (token.Data >>= name) &&
            ToText(name) == kHole) {
            const Tokens& part = parts.at(std::min(next++, parts.size() - 1));
            out.insert(out.end(), part.begin(), part.end());
        } else {
            out.push_back(token);
        }
    }
    return Tokens(out.data(), static_cast<sal_Int32>(out.size()));
}

Evaluator::Result Evaluator::Evaluate(const std::u16string& expression) {
    // Calc has no expression for some of the errors.
    const std::u16string_view name =
        TrimBlanks(std::u16string_view(expression).substr(expression.starts_with(u'=') ? 1 : 0));
    for (const ErrorCode code :
         {ErrorCode::kNull, ErrorCode::kDiv0, ErrorCode::kValue, ErrorCode::kRef, ErrorCode::kName,
          ErrorCode::kNum, ErrorCode::kNA}) {
        if (EqualIgnoringCase(name, ErrorName(code))) return {std::nullopt, Value(code)};
    }
    const CellAddress active = document_.ActiveCell();
    Scratch scratch(document_, active.Sheet);
    const ExpandedNames expanded =
        ExpandNames(document_, WithoutTableReferences(document_, expression));
    if (expanded.outside) return {std::nullopt, Value(ErrorCode::kRef)};
    Tokens tokens;
    switch (document_.formulas().Read(expanded.text, scratch.at(), tokens)) {
        case FormulaText::Reading::kMalformed: return {std::nullopt, Value(ErrorCode::kValue)};
        case FormulaText::Reading::kOutside: return {std::nullopt, Value(ErrorCode::kRef)};
        case FormulaText::Reading::kReady: break;
    }
    if (const auto place = shape_.PlainReference(tokens, scratch.at())) return {place, Value()};
    return EvaluateTokens(shape_.Settled(tokens, scratch.at(), active), scratch);
}

Evaluator::Result Evaluator::EvaluateTokens(const Tokens& tokens, Scratch& scratch) const {
    if (!shape_.IsNeverReference(tokens)) {
        if (const auto place = AskForReference(tokens, scratch)) return {place, Value()};
    }
    if (!shape_.IsNeverArray(tokens)) {
        std::vector<Tokens> asked;
        for (const auto& frame : sizeFrames_) asked.push_back(Insert(frame, {tokens}));
        const auto size = AskForNumbers(asked, chooseTwo_, scratch);
        if (size[0] * size[1] > 1) {
            const int rows = static_cast<int>(std::min<double>(size[0], Scratch::kMostRows));
            const int columns = static_cast<int>(std::min<double>(size[1], Scratch::kMostColumns));
            return {std::nullopt, AskForArray(tokens, rows, columns, scratch)};
        }
    }
    return {std::nullopt, AskForValue(tokens, scratch)};
}

std::optional<Place> Evaluator::AskForReference(const Tokens& tokens, Scratch& scratch) const {
    std::vector<Tokens> asked;
    for (const auto& frame : referenceFrames_) asked.push_back(Insert(frame, {tokens}));
    const auto answer = AskForNumbers(asked, chooseFive_, scratch);
    if (answer[0] < 1 || answer[1] < 1 || answer[2] < 1) return std::nullopt;
    Place place;
    place.sheet = static_cast<int>(answer[0]) - 1;
    place.area.top = static_cast<std::int32_t>(answer[1]);
    place.area.left = static_cast<std::int32_t>(answer[2]);
    place.area.bottom =
        std::min(place.area.top + static_cast<std::int32_t>(answer[3]) - 1, kSheetRows);
    place.area.right =
        std::min(place.area.left + static_cast<std::int32_t>(answer[4]) - 1, kSheetColumns);
    return place;
}

std::vector<double> Evaluator::AskForNumbers(const std::vector<Tokens>& expressions,
                                             const Tokens& choose, Scratch& scratch) const {
    std::vector<double> numbers;
    if (scratch.isProtected()) {
        for (const auto& expression : expressions) {
            // TRANSPOSE makes the plain formula evaluate its argument as an array's.
            numbers.push_back(AskForNumber(
                Insert(Frame(u"N(INDEX(TRANSPOSE(korvane_hole),1,1))"), {expression}), scratch));
        }
        return numbers;
    }
    const Scratch::Content content(scratch, Insert(choose, expressions), 1,
                                   static_cast<int>(expressions.size()));
    const auto rows =
        Reference<css::sheet::XCellRangeData>(content.cells(), UNO_QUERY_THROW)->getDataArray();
    for (const auto& cell : rows[0]) {
        double number = 0;
        cell >>= number;
        numbers.push_back(number);
    }
    return numbers;
}

Value Evaluator::AskForValue(const Tokens& tokens, Scratch& scratch) const {
    if (scratch.isProtected()) return AskForElement(tokens, 1, 1, scratch);
    const Scratch::Content content(scratch, tokens, 1, 1);
    return ResultOf(document_, content.Cell());
}

Value Evaluator::AskForArray(const Tokens& tokens, int rows, int columns, Scratch& scratch) const {
    Array array;
    array.rows = static_cast<std::size_t>(rows);
    array.columns = static_cast<std::size_t>(columns);
    std::optional<Scratch::Content> content;
    if (!scratch.isProtected()) content.emplace(scratch, tokens, rows, columns);
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            array.cells.push_back(content ? ResultOf(document_, content->Cell(row, column))
                                          : AskForElement(tokens, row + 1, column + 1, scratch));
        }
    }
    return Value(std::move(array));
}

double Evaluator::AskForNumber(const Tokens& expression, Scratch& scratch) const {
    const Scratch::Content content(scratch, expression, 1, 1);
    return content.Cell()->getValue();
}

// A protected sheet takes no array formula, but it takes a plain one. Nor does it
// let go of a number format that a result brings along: so every result asked
// for here is a plain number or a text.
Value Evaluator::AskForElement(const Tokens& tokens, int row, int column, Scratch& scratch) const {
    const std::u16string element =
        u"INDEX(TRANSPOSE(korvane_hole)," + NumberText(column) + u"," + NumberText(row) + u")";
    const auto framed = [&](std::u16string_view before, std::u16string_view behind) {
        return Insert(Frame(std::u16string(before) + element + std::u16string(behind)), {tokens});
    };
    std::optional<ErrorCode> error;
    double number = 0;
    {
        const Scratch::Content content(scratch, framed(u"N(", u")"), 1, 1);
        number = content.Cell()->getValue();
        error = HostError(content.Cell()->getError());
    }
    if (error) return Value(*error);
    if (AskForNumber(framed(u"ISTEXT(", u")*1"), scratch) != 0) {
        const Scratch::Content content(scratch, framed(u"T(", u")"), 1, 1);
        return Value(DisplayedText(content.Cell()));
    }
    if (number != 0 && number != 1) return Value(number);
    // Only of the expression itself the office knows whether it is a Boolean.
    const bool isBoolean =
        AskForNumber(Insert(Frame(u"ISLOGICAL(korvane_hole)*1"), {tokens}), scratch) != 0;
    return isBoolean ? Value(number != 0) : Value(number);
}

}  // namespace korvane::calc

#include "bindings/calc/evaluator.h"

#include <algorithm>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <string_view>

#include "base/number.h"
#include "base/text.h"
#include "bindings/calc/cell_values.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/fill_state.h"
#include "bindings/calc/r1c1.h"
#include "bindings/calc/table_references.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// The name that stands in a frame for the expression put there.
constexpr std::u16string_view kHole = u"korvane_hole";
// How often computed references are made way for; behind a place there can be
// another that is computed otherwise.
constexpr int kMostMoves = 4;

Tokens Part(const Tokens& tokens, sal_Int32 first, sal_Int32 last) {
    return Tokens(tokens.begin() + first, last - first);
}

// As many cells of a sheet as there are, from the first one on.
Area AreaFrom(const Area& first, double rows, double columns) {
    return {first.top, first.left,
            std::min(first.top + static_cast<std::int32_t>(rows) - 1, kSheetRows),
            std::min(first.left + static_cast<std::int32_t>(columns) - 1, kSheetColumns)};
}

}  // namespace

Evaluator::Evaluator(CalcDocument& document)
    : document_(document),
      changes_(document.model()),
      free_(document, changes_),
      names_(document, changes_),
      shape_(document.formulas().codes()) {
    // Only about the cells, never their values: those of a reference to whole
    // columns would be read one by one.
    addressFrame_ = Frame(u"IFERROR(CELL(\"ADDRESS\",korvane_hole),0)");
    firstCellFrames_ = {Frame(u"IFERROR(CELL(\"SHEET\",korvane_hole),0)"),
                        Frame(u"IFERROR(CELL(\"ROW\",korvane_hole),0)"),
                        Frame(u"IFERROR(CELL(\"COL\",korvane_hole),0)")};
    sizeFrames_ = {Frame(u"IFERROR(ROWS(korvane_hole),1)"),
                   Frame(u"IFERROR(COLUMNS(korvane_hole),1)")};
    sheetsFrame_ = Frame(u"IFERROR(SHEETS(korvane_hole),1)");
    chooseFive_ = Frame(
        u"CHOOSE({1,2,3,4,5},korvane_hole,korvane_hole,korvane_hole,korvane_hole,korvane_hole)");
    chooseThree_ = Frame(u"CHOOSE({1,2,3},korvane_hole,korvane_hole,korvane_hole)");
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
    active_ = document_.ActiveCell();
    const ExpandedNames expanded =
        names_.Expand(WithoutTableReferences(document_, expression), active_);
    if (expanded.outside) return {std::nullopt, Value(ErrorCode::kRef)};
    Tokens tokens;
    switch (document_.formulas().Read(expanded.text, active_, tokens)) {
        case FormulaText::Reading::kMalformed: return {std::nullopt, Value(ErrorCode::kValue)};
        case FormulaText::Reading::kOutside: return {std::nullopt, Value(ErrorCode::kRef)};
        case FormulaText::Reading::kReady: break;
    }
    if (const auto place = shape_.PlainReference(tokens, active_)) return {place, Value()};
    if (auto constant = shape_.PlainConstant(tokens)) return {std::nullopt, *std::move(constant)};
    tokens = shape_.Settled(tokens, active_);
    std::vector<Block> taken;
    for (const Token& token : tokens) {
        if (const auto block = BlockOf(token, active_)) taken.push_back(*block);
    }
    for (int move = 0;; ++move) {
        Scratch scratch(document_, FreePlace(tokens, taken));
        const Tokens ready = WithFixedTexts(tokens, scratch);
        if (move < kMostMoves && AddComputed(ready, scratch, taken)) continue;
        return EvaluateTokens(ready, scratch);
    }
}

// A text without a sheet means, to INDIRECT, the sheet that the formula stands on.
// Everything else has been settled and can be evaluated on any sheet; one that is
// protected takes little, and not without passing through the undo list.
std::vector<int> Evaluator::SheetsFor(const Tokens& tokens) const {
    std::vector<int> sheets{active_.Sheet};
    if (!shape_.IndirectCalls(tokens).empty()) return sheets;
    for (int sheet = 0; sheet < document_.SheetCount(); ++sheet) {
        if (sheet != active_.Sheet) sheets.push_back(sheet);
    }
    const auto isFree = [this](int sheet) { return !IsProtected(document_, sheet); };
    if (!isFree(active_.Sheet)) std::stable_partition(sheets.begin(), sheets.end(), isFree);
    return sheets;
}

CellAddress Evaluator::FreePlace(const Tokens& tokens, const std::vector<Block>& taken) {
    const auto sheets = SheetsFor(tokens);
    for (const int sheet : sheets) {
        if (const auto place = free_.Find(sheet, taken)) return *place;
    }
    // Formulas refer to every cell: they will be calculated with what is written
    // here, and again behind it. A text that itself means all cells counts its own.
    for (const int sheet : sheets) {
        if (const auto place = free_.FindEmpty(sheet)) return *place;
    }
    Fail(u"There are no empty cells to evaluate in");
}

bool Evaluator::AddComputed(const Tokens& tokens, Scratch& scratch,
                            std::vector<Block>& taken) const {
    bool added = false;
    for (const auto& call : shape_.ReferringCalls(tokens)) {
        const sal_Int32 length = call.close - call.first + 1;
        if (length == tokens.getLength()) continue;  // only its place will be asked for
        const auto place = AskForReference(Part(tokens, call.first, call.close + 1), scratch);
        if (!place) continue;
        const Block block{place->sheet, place->sheet, place->area};
        if (!scratch.Touches(block)) continue;
        taken.push_back(block);
        added = true;
    }
    return added;
}

// From behind: an inner call is fixed before the one that it stands in.
Tokens Evaluator::WithFixedTexts(const Tokens& tokens, Scratch& scratch) const {
    Tokens out(tokens);
    const auto calls = shape_.IndirectCalls(tokens);
    for (auto last = calls.rbegin(); last != calls.rend(); ++last) {
        // What stood behind it may be shorter now.
        const auto now = shape_.IndirectCalls(out);
        const auto call = std::find_if(now.begin(), now.end(), [&](const TokenShape::Call& other) {
            return other.first == last->first;
        });
        if (call == now.end()) continue;
        const auto text = FixedText(out, *call, scratch);
        if (!text) continue;
        Token token(document_.formulas().codes().push, css::uno::Any());
        token.Data <<= ToOUString(*text);
        std::vector<Token> all(out.begin(), out.begin() + call->first + 2);
        all.push_back(token);
        all.insert(all.end(), out.begin() + call->separators[0], out.end());
        out = Tokens(all.data(), static_cast<sal_Int32>(all.size()));
    }
    return out;
}

std::optional<std::u16string> Evaluator::FixedText(const Tokens& tokens,
                                                   const TokenShape::Call& indirect,
                                                   Scratch& scratch) const {
    if (indirect.separators.size() != 1) return std::nullopt;
    const Tokens text = Part(tokens, indirect.first + 2, indirect.separators[0]);
    const Tokens style = Part(tokens, indirect.separators[0] + 1, indirect.close);
    if (!shape_.IsNeverArray(text)) return std::nullopt;
    const auto value = [&](const Tokens& part) {
        auto constant = shape_.PlainConstant(part);
        return constant ? *constant : AskForValue(part, scratch);
    };
    // The A1 style has nothing relative.
    const bool isMissing =
        style.getLength() == 1 && style[0].OpCode == document_.formulas().codes().missing;
    if (!isMissing && style.getLength() > 0) {
        const Value said = value(style);
        const bool isA1 = said.Boolean() ? *said.Boolean() : said.Number() && *said.Number() != 0;
        if (isA1 || (!said.Boolean() && !said.Number())) return std::nullopt;
    }
    const Value said = value(text);
    if (!said.Text()) return std::nullopt;
    return WithoutRelative(*said.Text(), active_.Row + 1, active_.Column + 1);
}

Evaluator::Result Evaluator::EvaluateTokens(const Tokens& tokens, Scratch& scratch) const {
    if (!shape_.IsNeverReference(tokens)) {
        // Calc counts the sheets as if they were rows and columns.
        if (HasSeveralSheets(tokens, active_) &&
            AskForNumber(Insert(sheetsFrame_, {tokens}), scratch) > 1) {
            return {std::nullopt, Value(ErrorCode::kValue)};
        }
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
    if (!scratch.isProtected()) {
        const auto answer = AskForAddress(tokens, scratch);
        if (!answer.isReference || answer.place) return answer.place;
    }
    std::vector<Tokens> asked;
    for (const auto& frame : firstCellFrames_) asked.push_back(Insert(frame, {tokens}));
    for (const auto& frame : sizeFrames_) asked.push_back(Insert(frame, {tokens}));
    const auto answer = AskForNumbers(asked, chooseFive_, scratch);
    if (answer[0] < 1 || answer[1] < 1 || answer[2] < 1) return std::nullopt;
    const Area first = {static_cast<std::int32_t>(answer[1]), static_cast<std::int32_t>(answer[2])};
    return Place{static_cast<int>(answer[0]) - 1, AreaFrom(first, answer[3], answer[4])};
}

// Each question costs an evaluation of the tokens. So the first cell is asked for
// by one text; only where this names a sheet, or is written otherwise than A1, the
// numbers have to be asked for.
Evaluator::Addressed Evaluator::AskForAddress(const Tokens& tokens, Scratch& scratch) const {
    const Scratch::Content content(
        scratch,
        Insert(chooseThree_, {Insert(addressFrame_, {tokens}), Insert(sizeFrames_[0], {tokens}),
                              Insert(sizeFrames_[1], {tokens})}),
        1, 3);
    const auto rows =
        Reference<css::sheet::XCellRangeData>(content.cells(), UNO_QUERY_THROW)->getDataArray();
    rtl::OUString text;
    double height = 1;
    double width = 1;
    if (!(rows[0][0] >>= text)) return {};
    rows[0][1] >>= height;
    rows[0][2] >>= width;
    const std::u16string address = ToText(text);
    const auto first = address.starts_with(u'$') ? ParseArea(address) : std::nullopt;
    if (!first || !first->IsCell()) return {true, std::nullopt};
    return {true, Place{scratch.at().Sheet, AreaFrom(*first, height, width)}};
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
        return Value(TextIn(content.Cell()));
    }
    if (number != 0 && number != 1) return Value(number);
    // Only of the expression itself the office knows whether it is a Boolean; in
    // SUMPRODUCT it is evaluated as an array's here, too.
    const bool isBoolean =
        AskForNumber(Insert(Frame(u"SUMPRODUCT(ISLOGICAL(korvane_hole)*1)"), {tokens}), scratch) !=
        0;
    return isBoolean ? Value(number != 0) : Value(number);
}

}  // namespace korvane::calc

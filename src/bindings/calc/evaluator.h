// Evaluating expression texts, by scratch cells that leave no trace.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

#include "base/value.h"
#include "bindings/calc/calc_document.h"
#include "bindings/calc/document_changes.h"
#include "bindings/calc/free_cells.h"
#include "bindings/calc/name_expansion.h"
#include "bindings/calc/scratch.h"
#include "bindings/calc/token_shape.h"

namespace korvane::calc {

class Evaluator {
public:
    explicit Evaluator(CalcDocument& document);

    // What an expression gives, seen from the active cell.
    struct Result {
        std::optional<Place> place;  // a reference; `value` then means nothing
        Value value;
    };
    Result Evaluate(const std::u16string& expression);

private:
    Result EvaluateTokens(const Tokens& tokens, Scratch& scratch) const;
    // Cells that the tokens can be evaluated in, outside of the taken ones.
    CellAddress FreePlace(const Tokens& tokens, const std::vector<Block>& taken);
    // The sheets where the tokens mean the same, the best ones first.
    std::vector<int> SheetsFor(const Tokens& tokens) const;
    // Adds the references that the tokens will compute and that lead to the
    // scratch cells; false when there are none.
    bool AddComputed(const Tokens& tokens, Scratch& scratch, std::vector<Block>& taken) const;
    // The tokens with INDIRECT's relative texts ("RC[-1]") counted from the
    // active cell.
    Tokens WithFixedTexts(const Tokens& tokens, Scratch& scratch) const;
    std::optional<std::u16string> FixedText(const Tokens& tokens, const TokenShape::Call& indirect,
                                            Scratch& scratch) const;
    std::optional<Place> AskForReference(const Tokens& tokens, Scratch& scratch) const;
    struct Addressed {
        bool isReference = false;
        std::optional<Place> place;  // nothing when the address alone does not tell
    };
    // On a sheet that is not protected.
    Addressed AskForAddress(const Tokens& tokens, Scratch& scratch) const;
    Value AskForValue(const Tokens& tokens, Scratch& scratch) const;
    Value AskForArray(const Tokens& tokens, int rows, int columns, Scratch& scratch) const;
    // One value by plain formulas: the element of the array that `tokens` give.
    Value AskForElement(const Tokens& tokens, int row, int column, Scratch& scratch) const;
    double AskForNumber(const Tokens& expression, Scratch& scratch) const;
    // Evaluates expressions that give numbers, with one write where possible.
    std::vector<double> AskForNumbers(const std::vector<Tokens>& expressions, const Tokens& choose,
                                      Scratch& scratch) const;
    Tokens Frame(std::u16string_view text) const;
    Tokens Insert(const Tokens& frame, const std::vector<Tokens>& parts) const;

    CalcDocument& document_;
    CellAddress active_;  // that of the evaluation that runs
    DocumentChanges changes_;
    FreeCells free_;
    NameExpansion names_;
    TokenShape shape_;
    Tokens addressFrame_;
    std::array<Tokens, 3> firstCellFrames_;
    std::array<Tokens, 2> sizeFrames_;
    Tokens sheetsFrame_;
    Tokens chooseFive_;
    Tokens chooseThree_;
    Tokens chooseTwo_;
};

}  // namespace korvane::calc

// The cells that the references of a token list mean.
#pragma once

#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/SingleReference.hpp>
#include <cstdint>
#include <optional>
#include <vector>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/formula_text.h"

namespace korvane::calc {

// Cells of one sheet; the sheet counted from 0.
struct Place {
    int sheet = 0;
    Area area;
};

// Cells of one or several sheets that follow each other.
struct Block {
    int firstSheet = 0;
    int lastSheet = 0;
    Area area;
};

// What one token refers to, in a formula at `at`; nothing for other tokens and
// for references that lead nowhere.
std::optional<Block> BlockOf(const Token& token, const CellAddress& at);

// Whether a reference to several sheets is among the tokens.
bool HasSeveralSheets(const Tokens& tokens, const CellAddress& at);

}  // namespace korvane::calc

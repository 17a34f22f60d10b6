// Formula texts in Excel's spelling and in the spelling that Calc's own parser
// and printer of Excel formulas have; texts alone, no office.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace korvane::calc {

// A formula text cut into pieces that never split a quotation.
struct Piece {
    enum Kind {
        kBlank,    // blanks and line ends
        kText,     // "…"
        kQuoted,   // '…', a sheet's name
        kBracket,  // […], a book's name or a table's columns
        kWord,     // letters, digits and what stands in names and references
        kError,    // #N/A and its like
        kSign,     // any one other character
    };
    Kind kind;
    std::u16string_view text;

    bool Is(char16_t sign) const { return kind == kSign && text.front() == sign; }
};

// The pieces of `text`; views into it. An open quotation or bracket becomes a
// kSign of its first character.
std::vector<Piece> CutFormula(std::u16string_view text);

// The error names in a formula text, in their order.
std::vector<std::u16string> ErrorsIn(std::u16string_view text);

// The references to tables (Table1[Column]) in the office's own text of a
// formula, in their order, as Excel writes them.
std::vector<std::u16string> TableReferencesIn(std::u16string_view native);

// Excel's text of what Calc printed: bare TRUE and FALSE, no prefixes of newer
// functions, [Book.xlsx]Sheet!A1 for cells of other files.
std::u16string ShownText(std::u16string_view printed);

// What Calc's parser is to read for a text in Excel's spelling (without "="):
// error names become expressions with that error, TRUE becomes TRUE(), the own
// book's prefix goes.
struct ParserText {
    std::u16string text;
    bool otherBook = false;  // it refers to another workbook
};
ParserText TextForParser(std::u16string_view shown, std::u16string_view ownBook);

// Whether Excel would read the text (without "=") as a formula at all: closed
// quotations and brackets, operands between operators.
bool IsWellFormed(std::u16string_view shown);

}  // namespace korvane::calc

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

// A quoted piece's text without its quotes; every other text as it is.
std::u16string Unquoted(std::u16string_view text);

// a–z to A–Z.
std::u16string Upper(std::u16string_view text);

// Excel's text of what Calc printed: bare TRUE and FALSE, no prefixes of newer
// functions, sheets quoted as addresses quote them, 1E+20 for 1E+020.
std::u16string ShownText(std::u16string_view printed);

// What Calc's parser is to read for a text in Excel's spelling (without "="):
// error names become expressions with that error, TRUE becomes TRUE(), the own
// book's prefix goes, sheets are quoted as addresses quote them.
struct ParserText {
    std::u16string text;
    bool otherBook = false;  // it refers to another workbook
};
ParserText TextForParser(std::u16string_view shown, std::u16string_view ownBook);

// Whether a file of this name is a workbook of Excel's.
bool IsExcelFile(std::u16string_view fileName);

// Whether Excel would read the text (without "=") as a formula at all: closed
// quotations and brackets, operands between operators.
bool IsWellFormed(std::u16string_view shown);

}  // namespace korvane::calc

#include "bindings/calc/excel_text.h"

#include <algorithm>
#include <array>

#include "base/a1.h"
#include "base/text.h"

namespace korvane::calc {
namespace {

constexpr std::u16string_view kErrors[] = {u"#NULL!", u"#DIV/0!", u"#VALUE!", u"#REF!",
                                           u"#NAME?", u"#NUM!",   u"#N/A"};

bool IsBlank(char16_t ch) { return ch == u' ' || ch == u'\n' || ch == u'\r' || ch == u'\t'; }

bool IsWordCharacter(char16_t ch) {
    return (ch >= u'A' && ch <= u'Z') || (ch >= u'a' && ch <= u'z') || (ch >= u'0' && ch <= u'9') ||
           ch == u'_' || ch == u'.' || ch == u'$' || ch == u'\\' || ch == u'?' || ch > 0x7f;
}

// The length of the quotation that `text` begins with, a doubled mark inside
// standing for one; 0 when it is not closed.
std::size_t QuotationLength(std::u16string_view text) {
    const char16_t mark = text.front();
    for (std::size_t k = 1; k < text.size(); ++k) {
        if (text[k] != mark) continue;
        if (k + 1 < text.size() && text[k + 1] == mark) {
            ++k;
        } else {
            return k + 1;
        }
    }
    return 0;
}

std::size_t BracketLength(std::u16string_view text) {
    int depth = 0;
    for (std::size_t k = 0; k < text.size(); ++k) {
        if (text[k] == u'\'') {
            // Quotes a file's address, and any one character of a column's name.
            const std::size_t quoted = QuotationLength(text.substr(k));
            k += quoted > 2 && text.substr(k).starts_with(u"'file:") ? quoted - 1 : 1;
        } else if (text[k] == u'[') {
            ++depth;
        } else if (text[k] == u']' && --depth == 0) {
            return k + 1;
        }
    }
    return 0;
}

std::size_t ErrorLength(std::u16string_view text) {
    for (const auto error : kErrors) {
        if (EqualIgnoringCase(text.substr(0, error.size()), error)) return error.size();
    }
    return 0;
}

Piece NextPiece(std::u16string_view text) {
    const auto run = [&](auto belongs) {
        return static_cast<std::size_t>(std::find_if_not(text.begin(), text.end(), belongs) -
                                        text.begin());
    };
    const auto piece = [&](Piece::Kind kind, std::size_t length) {
        return length == 0 ? Piece{Piece::kSign, text.substr(0, 1)}
                           : Piece{kind, text.substr(0, length)};
    };
    const char16_t ch = text.front();
    if (IsBlank(ch)) return piece(Piece::kBlank, run(IsBlank));
    if (IsWordCharacter(ch)) return piece(Piece::kWord, run(IsWordCharacter));
    if (ch == u'"') return piece(Piece::kText, QuotationLength(text));
    if (ch == u'\'') return piece(Piece::kQuoted, QuotationLength(text));
    if (ch == u'[') return piece(Piece::kBracket, BracketLength(text));
    if (ch == u'#') return piece(Piece::kError, ErrorLength(text));
    return piece(Piece::kSign, 1);
}

// "Bücher.xlsx" of "'file:///home/B%C3%BCcher.xlsx'".
std::u16string BookOfAddress(std::u16string_view address) {
    std::string bytes = ToUtf8(AfterLast(address, u'/'));
    if (bytes.ends_with('\'')) bytes.pop_back();
    std::string decoded;
    for (std::size_t k = 0; k < bytes.size(); ++k) {
        const auto digit = [&](std::size_t at) {
            const auto found = at < bytes.size()
                                   ? std::string_view("0123456789ABCDEFabcdef").find(bytes[at])
                                   : std::string_view::npos;
            return found == std::string_view::npos
                       ? -1
                       : static_cast<int>(found > 15 ? found - 6 : found);
        };
        if (bytes[k] == '%' && digit(k + 1) >= 0 && digit(k + 2) >= 0) {
            decoded += static_cast<char>(digit(k + 1) * 16 + digit(k + 2));
            k += 2;
        } else {
            decoded += bytes[k];
        }
    }
    return ToUtf16(decoded);
}

std::u16string Unquoted(std::u16string_view text) {
    if (!text.starts_with(u'\'')) return std::u16string(text);
    return ReplaceAll(std::u16string(text.substr(1, text.size() - 2)), u"''", u"'");
}

bool IsBoolean(std::u16string_view word) {
    return EqualIgnoringCase(word, u"TRUE") || EqualIgnoringCase(word, u"FALSE");
}

std::u16string Upper(std::u16string_view text) {
    std::u16string out(text);
    for (auto& ch : out) {
        if (ch >= u'a' && ch <= u'z') ch = static_cast<char16_t>(ch - (u'a' - u'A'));
    }
    return out;
}

std::u16string_view WithoutNewFunctionPrefix(std::u16string_view word) {
    for (bool again = true; again;) {
        again = false;
        for (const std::u16string_view prefix : {u"_xlfn.", u"_xlws.", u"_xlpm.", u"_xludf."}) {
            if (word.size() > prefix.size() &&
                EqualIgnoringCase(word.substr(0, prefix.size()), prefix)) {
                word.remove_prefix(prefix.size());
                again = true;
            }
        }
    }
    return word;
}

// An expression whose value is the error. Calc's parser takes no error names.
std::u16string_view ExpressionOf(std::u16string_view error) {
    if (EqualIgnoringCase(error, u"#N/A")) return u"NA()";
    if (EqualIgnoringCase(error, u"#DIV/0!")) return u"(1/0)";
    if (EqualIgnoringCase(error, u"#REF!")) return u"INDIRECT(\"\")";
    if (EqualIgnoringCase(error, u"#NUM!")) return u"(10^1000)";
    if (EqualIgnoringCase(error, u"#NULL!")) return u"(A1 B2)";
    if (EqualIgnoringCase(error, u"#NAME?")) return u"korvane_no_name";
    return u"(\"a\"+0)";
}

}  // namespace

std::vector<Piece> CutFormula(std::u16string_view text) {
    std::vector<Piece> pieces;
    while (!text.empty()) {
        pieces.push_back(NextPiece(text));
        text.remove_prefix(pieces.back().text.size());
    }
    return pieces;
}

std::vector<std::u16string> ErrorsIn(std::u16string_view text) {
    std::vector<std::u16string> errors;
    for (const auto& piece : CutFormula(text)) {
        if (piece.kind == Piece::kError) errors.push_back(Upper(piece.text));
    }
    return errors;
}

std::vector<std::u16string> TableReferencesIn(std::u16string_view native) {
    const auto pieces = CutFormula(native);
    std::vector<std::u16string> references;
    for (std::size_t k = 1; k < pieces.size(); ++k) {
        if (pieces[k].kind != Piece::kBracket || pieces[k - 1].kind != Piece::kWord) continue;
        references.push_back(std::u16string(pieces[k - 1].text) +
                             ReplaceAll(std::u16string(pieces[k].text), u"];[", u"],["));
    }
    return references;
}

std::u16string ShownText(std::u16string_view printed) {
    const auto pieces = CutFormula(printed);
    const auto is = [&](std::size_t at, char16_t sign) {
        return at < pieces.size() && pieces[at].Is(sign);
    };
    std::u16string out;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const Piece& piece = pieces[k];
        if (piece.kind == Piece::kBracket && piece.text.starts_with(u"['file:") &&
            is(k + 2, u'!')) {
            out += SheetPrefix(BookOfAddress(piece.text.substr(1, piece.text.size() - 2)),
                               Unquoted(pieces[k + 1].text));
            k += 2;
        } else if (piece.kind != Piece::kWord) {
            out += piece.text;
        } else if (IsBoolean(piece.text) && is(k + 1, u'(') && is(k + 2, u')')) {
            out += piece.text;
            k += 2;
        } else if (is(k + 1, u'(')) {
            // A function that Calc does not know has lost its case.
            auto name = WithoutNewFunctionPrefix(piece.text);
            // Calc's names for the functions that Excel calls CEILING and FLOOR.
            if (name == u"CEILING.XCL" || name == u"FLOOR.XCL") name.remove_suffix(4);
            out += Fold(name) == name ? Upper(name) : std::u16string(name);
        } else {
            out += WithoutNewFunctionPrefix(piece.text);
        }
    }
    return out;
}

ParserText TextForParser(std::u16string_view shown, std::u16string_view ownBook) {
    const auto pieces = CutFormula(shown);
    const auto is = [&](std::size_t at, char16_t sign) {
        return at < pieces.size() && pieces[at].Is(sign);
    };
    ParserText out;
    std::size_t prefixStart = 0;  // where a "Sheet!" that has just been written begins
    bool inArray = false;
    const bool ofExcel = ContainsIgnoringCase(AfterLast(ownBook, u'.'), u"xls");
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const Piece& piece = pieces[k];
        const bool joined = k > 0 && pieces[k - 1].kind == Piece::kWord;
        if (piece.Is(u'{') || piece.Is(u'}')) inArray = piece.Is(u'{');
        if (piece.kind == Piece::kBracket && !joined && is(k + 2, u'!')) {
            const auto book = piece.text.substr(1, piece.text.size() - 2);
            if (EqualIgnoringCase(book, ownBook)) continue;
            out.otherBook = true;
        }
        if ((piece.kind == Piece::kQuoted || piece.kind == Piece::kWord) && is(k + 1, u'!')) {
            prefixStart = out.text.size();
        }
        if (piece.kind == Piece::kQuoted && is(k + 1, u'!')) {
            const auto parts = SplitReference(std::u16string(piece.text) + u"!A1");
            if (parts && !parts->book.empty()) {
                if (EqualIgnoringCase(parts->book, ownBook)) {
                    out.text += SheetPrefix(u"", parts->sheet);
                    ++k;
                    continue;
                }
                out.otherBook = true;
            }
            // With a folder in front of the book's name.
            if ((!parts || parts->book.empty()) &&
                piece.text.find(u'[') != std::u16string_view::npos)
                out.otherBook = true;
            // Calc's parser takes quotes only where it would write them itself.
            out.text += piece.text;
        } else if (piece.kind == Piece::kError) {
            if (k > 0 && pieces[k - 1].Is(u'!')) out.text.resize(prefixStart);
            out.text += ExpressionOf(piece.text);
        } else if (piece.kind == Piece::kWord && IsBoolean(piece.text) && !inArray &&
                   !is(k + 1, u'(') && !is(k + 1, u'!')) {
            out.text += piece.text;
            out.text += u"()";
        } else if (piece.kind == Piece::kWord) {
            const auto name = WithoutNewFunctionPrefix(piece.text);
            out.text += name;
            // In a workbook of Excel's they are Excel's functions.
            if (ofExcel && is(k + 1, u'(') &&
                (EqualIgnoringCase(name, u"CEILING") || EqualIgnoringCase(name, u"FLOOR"))) {
                out.text += u".XCL";
            }
        } else {
            out.text += piece.text;
        }
    }
    return out;
}

}  // namespace korvane::calc

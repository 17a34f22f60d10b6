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
            ++k;  // quotes any one character of a column's name
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

bool IsBoolean(std::u16string_view word) {
    return EqualIgnoringCase(word, u"TRUE") || EqualIgnoringCase(word, u"FALSE");
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

// Whether piece `k` is the sheet of a reference or a name, its "!" behind it. One
// with a book in its quotes is left as it is.
bool IsSheetOf(const std::vector<Piece>& pieces, std::size_t k) {
    const Piece& piece = pieces[k];
    const bool isName = piece.kind == Piece::kWord || piece.kind == Piece::kQuoted;
    return isName && k + 1 < pieces.size() && pieces[k + 1].Is(u'!') &&
           piece.text.find(u'[') == std::u16string_view::npos &&
           (k == 0 || pieces[k - 1].kind != Piece::kBracket);
}

// Whether the piece and the two behind it are a number with an exponent: "1E",
// "+", "020". No name begins with a digit.
bool IsExponent(const std::vector<Piece>& pieces, std::size_t k) {
    const auto isDigits = [](std::u16string_view text) {
        return !text.empty() && text.find_first_not_of(u"0123456789") == std::u16string_view::npos;
    };
    const auto number = pieces[k].text;
    return k + 2 < pieces.size() && number.size() > 1 && FoldChar(number.back()) == u'e' &&
           (pieces[k + 1].Is(u'+') || pieces[k + 1].Is(u'-')) &&
           pieces[k + 2].kind == Piece::kWord && isDigits(pieces[k + 2].text) &&
           isDigits(number.substr(0, 1)) &&
           number.substr(0, number.size() - 1).find_first_not_of(u"0123456789.") ==
               std::u16string_view::npos;
}

// The office writes exponents with three digits, Excel with two or more.
std::u16string_view WithoutLeadingZeros(std::u16string_view digits) {
    while (digits.size() > 2 && digits.front() == u'0') digits.remove_prefix(1);
    return digits;
}

// A function that Calc does not know has lost its case.
std::u16string ShownFunction(std::u16string_view printed) {
    auto name = WithoutNewFunctionPrefix(printed);
    // Calc's names for the functions that Excel calls CEILING and FLOOR.
    if (name == u"CEILING.XCL" || name == u"FLOOR.XCL") name.remove_suffix(4);
    return Fold(name) == name ? Upper(name) : std::u16string(name);
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

class ParserWriter {
public:
    ParserWriter(std::u16string_view shown, std::u16string_view ownBook)
        : pieces_(CutFormula(shown)), ownBook_(ownBook), ofExcel_(IsExcelFile(ownBook)) {}

    ParserText Write() {
        bool inArray = false;
        for (at_ = 0; at_ < pieces_.size(); ++at_) {
            const Piece& piece = pieces_[at_];
            if (piece.Is(u'{') || piece.Is(u'}')) inArray = piece.Is(u'{');
            if (piece.kind == Piece::kBracket && IsBook()) {
                WriteBook();
            } else if (IsSheetOf(pieces_, at_) || (piece.kind == Piece::kQuoted && Is(1, u'!'))) {
                WriteSheet();
            } else if (piece.kind == Piece::kError) {
                if (at_ > 0 && pieces_[at_ - 1].Is(u'!')) out_.text.resize(prefixStart_);
                out_.text += ExpressionOf(piece.text);
            } else if (piece.kind == Piece::kWord) {
                WriteWord(inArray);
            } else {
                out_.text += piece.text;
            }
        }
        return std::move(out_);
    }

private:
    bool Is(std::size_t ahead, char16_t sign) const {
        return at_ + ahead < pieces_.size() && pieces_[at_ + ahead].Is(sign);
    }
    bool IsBook() const {
        const bool isTable = at_ > 0 && pieces_[at_ - 1].kind == Piece::kWord;
        return !isTable && Is(2, u'!');
    }

    void WriteBook() {
        const auto text = pieces_[at_].text;
        if (EqualIgnoringCase(text.substr(1, text.size() - 2), ownBook_)) return;
        out_.otherBook = true;
        out_.text += text;
    }

    // Of the letters beyond ASCII Calc's parser wants some quoted: it takes quotes
    // round all of them.
    static std::u16string QuotedForParser(const std::u16string& sheet) {
        std::u16string prefix = SheetPrefix(u"", sheet);
        const bool plain =
            std::all_of(sheet.begin(), sheet.end(), [](char16_t ch) { return ch < 0x80; });
        return plain || prefix.starts_with(u'\'') ? prefix : u"'" + sheet + u"'!";
    }

    void WriteSheet() {
        prefixStart_ = out_.text.size();
        const auto text = pieces_[at_].text;
        if (text.find(u'[') == std::u16string_view::npos) {
            const bool ofSeveral = Unquoted(text).find(u':') != std::u16string::npos;
            out_.text += ofSeveral ? std::u16string(text) + u"!" : QuotedForParser(Unquoted(text));
        } else {
            const auto parts = SplitReference(std::u16string(text) + u"!A1");
            // With a folder in front of it a book's name is no part.
            const bool own = parts && EqualIgnoringCase(parts->book, ownBook_);
            if (!own) out_.otherBook = true;
            out_.text += own ? QuotedForParser(parts->sheet) : std::u16string(text) + u"!";
        }
        ++at_;
    }

    void WriteWord(bool inArray) {
        const auto text = pieces_[at_].text;
        const bool isCall = Is(1, u'(');
        const auto name = WithoutNewFunctionPrefix(text);
        out_.text += name;
        if (IsBoolean(text) && !inArray && !isCall) out_.text += u"()";
        // In a workbook of Excel's they are Excel's functions.
        if (ofExcel_ && isCall &&
            (EqualIgnoringCase(name, u"CEILING") || EqualIgnoringCase(name, u"FLOOR"))) {
            out_.text += u".XCL";
        }
    }

    const std::vector<Piece> pieces_;
    std::u16string_view ownBook_;
    bool ofExcel_;
    std::size_t at_ = 0;
    std::size_t prefixStart_ = 0;  // where a "Sheet!" that has just been written begins
    ParserText out_;
};

}  // namespace

std::vector<Piece> CutFormula(std::u16string_view text) {
    std::vector<Piece> pieces;
    while (!text.empty()) {
        pieces.push_back(NextPiece(text));
        text.remove_prefix(pieces.back().text.size());
    }
    return pieces;
}

bool IsExcelFile(std::u16string_view fileName) {
    return ContainsIgnoringCase(AfterLast(fileName, u'.'), u"xls");
}

std::u16string Unquoted(std::u16string_view text) {
    if (!text.starts_with(u'\'')) return std::u16string(text);
    return ReplaceAll(std::u16string(text.substr(1, text.size() - 2)), u"''", u"'");
}

std::u16string Upper(std::u16string_view text) {
    std::u16string out(text);
    for (auto& ch : out) {
        if (ch >= u'a' && ch <= u'z') ch = static_cast<char16_t>(ch - (u'a' - u'A'));
    }
    return out;
}

std::u16string ShownText(std::u16string_view printed) {
    const auto pieces = CutFormula(printed);
    const auto is = [&](std::size_t at, char16_t sign) {
        return at < pieces.size() && pieces[at].Is(sign);
    };
    std::u16string out;
    for (std::size_t k = 0; k < pieces.size(); ++k) {
        const Piece& piece = pieces[k];
        if (IsSheetOf(pieces, k)) {
            out += SheetPrefix(u"", Unquoted(piece.text));
            ++k;
        } else if (piece.kind != Piece::kWord) {
            out += piece.text;
        } else if (IsExponent(pieces, k)) {
            out.append(piece.text).append(pieces[k + 1].text);
            out += WithoutLeadingZeros(pieces[k + 2].text);
            k += 2;
        } else if (IsBoolean(piece.text) && is(k + 1, u'(') && is(k + 2, u')')) {
            out += piece.text;
            k += 2;
        } else if (is(k + 1, u'(')) {
            out += ShownFunction(piece.text);
        } else {
            out += WithoutNewFunctionPrefix(piece.text);
        }
    }
    return out;
}

ParserText TextForParser(std::u16string_view shown, std::u16string_view ownBook) {
    return ParserWriter(shown, ownBook).Write();
}

}  // namespace korvane::calc

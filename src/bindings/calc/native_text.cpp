#include "bindings/calc/native_text.h"

#include "base/a1.h"
#include "base/text.h"
#include "bindings/calc/excel_text.h"

namespace korvane::calc {
namespace {

// "Bücher.xlsx" of "file:///home/B%C3%BCcher.xlsx".
std::u16string BookOfAddress(std::u16string_view address) {
    const std::string bytes = ToUtf8(AfterLast(address, u'/'));
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

class Reader {
public:
    explicit Reader(std::u16string_view native) : pieces_(CutFormula(native)) {}

    NativeParts Read() {
        for (at_ = 0; at_ < pieces_.size(); ++at_) {
            const Piece& piece = pieces_[at_];
            if (piece.kind == Piece::kError) {
                parts_.errors.push_back(Upper(piece.text));
            } else if (piece.Is(u'{')) {
                ReadArray();
            } else if (piece.kind == Piece::kQuoted && Is(at_ + 1, u'#')) {
                ReadExternal();
            } else if (piece.kind == Piece::kBracket && at_ > 0 &&
                       pieces_[at_ - 1].kind == Piece::kWord) {
                parts_.tables.push_back(std::u16string(pieces_[at_ - 1].text) +
                                        ReplaceAll(std::u16string(piece.text), u"];[", u"],["));
            }
        }
        return std::move(parts_);
    }

private:
    bool Is(std::size_t at, char16_t sign) const {
        return at < pieces_.size() && pieces_[at].Is(sign);
    }
    bool IsWord(std::size_t at) const {
        return at < pieces_.size() && pieces_[at].kind == Piece::kWord;
    }

    // The office separates an array's columns by ";" and its rows by "|".
    void ReadArray() {
        std::u16string text;
        for (; at_ < pieces_.size(); ++at_) {
            const Piece& piece = pieces_[at_];
            if (piece.Is(u';')) {
                text += u',';
            } else if (piece.Is(u'|')) {
                text += u';';
            } else {
                text += piece.text;
            }
            if (piece.Is(u'}')) break;
        }
        parts_.arrays.push_back(std::move(text));
    }

    // 'file:///folder/Book.xlsx'#$Sheet.A1:B2, or a name in place of the cells.
    void ReadExternal() {
        const std::u16string book = BookOfAddress(Unquoted(pieces_[at_].text));
        at_ += 2;
        std::u16string sheet;
        std::u16string rest;
        if (IsWord(at_) && pieces_[at_].text == u"$" && at_ + 1 < pieces_.size() &&
            pieces_[at_ + 1].kind == Piece::kQuoted) {
            sheet = Unquoted(pieces_[at_ + 1].text);
            at_ += 2;
            if (IsWord(at_)) rest = pieces_[at_].text.substr(1);
        } else if (IsWord(at_)) {
            const auto word = pieces_[at_].text;
            const auto dot = word.starts_with(u'$') ? word.find(u'.') : std::u16string_view::npos;
            if (dot != std::u16string_view::npos) sheet = word.substr(1, dot - 1);
            rest = dot == std::u16string_view::npos ? word : word.substr(dot + 1);
        }
        if (Is(at_ + 1, u':') && IsWord(at_ + 2) && IsCorner(pieces_[at_ + 2].text)) {
            rest += u':';
            rest += pieces_[at_ + 2].text;
            at_ += 2;
        }
        // A part that the other file has lost belongs to this reference too.
        while (at_ + 1 < pieces_.size() && pieces_[at_ + 1].kind == Piece::kError) {
            rest = u"#REF!";
            ++at_;
        }
        parts_.externals.push_back(
            (sheet.empty() ? SheetPrefix(u"", book) : SheetPrefix(book, sheet)) + rest);
    }

    // Whether a word is the end of a block: no function, no cell of its own sheet.
    bool IsCorner(std::u16string_view word) const {
        return !Is(at_ + 3, u'(') && ParseArea(word).has_value();
    }

    const std::vector<Piece> pieces_;
    std::size_t at_ = 0;
    NativeParts parts_;
};

}  // namespace

NativeParts PartsOfNative(std::u16string_view native) {
    // An array formula stands in brackets of its own.
    if (native.starts_with(u"{=")) native.remove_prefix(1);
    return Reader(native).Read();
}

}  // namespace korvane::calc

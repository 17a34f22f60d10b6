#include "bindings/calc/printable_tokens.h"

#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/ExternalReference.hpp>
#include <com/sun/star/sheet/NameToken.hpp>
#include <com/sun/star/sheet/ReferenceFlags.hpp>
#include <utility>

#include "base/a1.h"
#include "base/text.h"
#include "bindings/calc/excel_text.h"
#include "bindings/calc/union_brackets.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
namespace Flags = css::sheet::ReferenceFlags;
using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// A text that no user writes (private-use characters), printed in quotes.
constexpr char16_t kPlaceholder = 0xE5C7;

std::u16string NameOf(const Any& sheet) {
    Reference<css::container::XNamed> named;
    sheet >>= named;
    return named.is() ? ToText(named->getName()) : std::u16string();
}

// How many error names the office's own text of the reference has: one for each
// coordinate that is lost.
std::size_t LostParts(const css::sheet::SingleReference& reference) {
    const auto is = [&](sal_Int32 flag) { return (reference.Flags & flag) != 0; };
    return std::size_t{is(Flags::COLUMN_DELETED)} + std::size_t{is(Flags::ROW_DELETED)} +
           std::size_t{is(Flags::SHEET_DELETED) && is(Flags::SHEET_3D)};
}

}  // namespace

PrintableTokens::PrintableTokens(const Tokens& read, const css::table::CellAddress& at,
                                 std::u16string_view native, const OpCodes& codes,
                                 const SheetsRef& sheets)
    : read_(read), at_(at), codes_(codes), sheets_(sheets), native_(PartsOfNative(native)) {
    for (sal_Int32 k = 0; k < read_.getLength(); ++k) {
        const Token& token = read_[k];
        if (TakeArray(k) || TakeTable(k) || TakeLost(k) || TakeReference(k)) continue;
        if (token.OpCode == codes_.push && !token.Data.hasValue()) {
            Place(NextError());
        } else {
            out_.push_back(token);
        }
    }
    out_ = WithUnionBrackets(std::move(out_), codes_);
}

Tokens PrintableTokens::tokens() const {
    return Tokens(out_.data(), static_cast<sal_Int32>(out_.size()));
}

std::u16string PrintableTokens::Restored(std::u16string printed) const {
    // The longest first: each is contained in the ones after it.
    for (std::size_t k = placed_.size(); k > 0; --k) {
        printed = ReplaceAll(std::move(printed), u"\"" + std::u16string(k, kPlaceholder) + u"\"",
                             placed_[k - 1]);
    }
    return printed;
}

void PrintableTokens::Place(std::u16string text) {
    placed_.push_back(std::move(text));
    Any data;
    data <<= ToOUString(std::u16string(placed_.size(), kPlaceholder));
    out_.emplace_back(codes_.push, data);
}

std::u16string PrintableTokens::NextError() {
    return nextError_ < native_.errors.size() ? native_.errors[nextError_++] : u"#N/A";
}

// One token when it holds numbers, texts and Booleans alone, else a token for
// each constant and sign.
bool PrintableTokens::TakeArray(sal_Int32& k) {
    const bool isOpen = read_[k].OpCode == codes_.arrayOpen;
    if (!isOpen && read_[k].Data.getValueTypeClass() != css::uno::TypeClass_SEQUENCE) return false;
    if (nextArray_ >= native_.arrays.size()) return false;
    while (isOpen && read_[k].OpCode != codes_.arrayClose && k + 1 < read_.getLength()) ++k;
    Place(native_.arrays[nextArray_++]);
    return true;
}

// A table's name is a token that no list of the office has; neither have its
// brackets, two neighbouring numbers.
bool PrintableTokens::TakeTable(sal_Int32& k) {
    css::sheet::NameToken name;
    const Token& token = read_[k];
    const bool isTable = (token.Data >>= name) && token.OpCode != codes_.name &&
                         token.OpCode != codes_.databaseArea && k + 1 < read_.getLength();
    if (!isTable || nextTable_ >= native_.tables.size()) return false;
    Place(native_.tables[nextTable_++]);
    const sal_Int32 open = read_[k + 1].OpCode;
    int depth = 0;
    do {
        ++k;
        if (read_[k].OpCode == open) ++depth;
        if (read_[k].OpCode == open + 1) --depth;
    } while (depth > 0 && k + 1 < read_.getLength());
    return true;
}

// A lost reference that the office has read as a word, or as two of them when its
// sheet is quoted.
bool PrintableTokens::TakeLost(sal_Int32& k) {
    rtl::OUString word;
    if (read_[k].OpCode != codes_.bad || !(read_[k].Data >>= word)) return false;
    std::u16string text = ToText(word);
    if (text.ends_with(u"!#") && k + 1 < read_.getLength() && read_[k + 1].OpCode == codes_.bad &&
        (read_[k + 1].Data >>= word) && EqualIgnoringCase(ToText(word), u"ref!")) {
        text += ToText(word);
        ++k;
    }
    const std::size_t errors = PartsOfNative(text).errors.size();
    if (errors == 0) return false;
    nextError_ += errors;
    Place(PrefixOf(text) + u"#REF!");
    return true;
}

bool PrintableTokens::TakeReference(sal_Int32& k) {
    const Any& data = read_[k].Data;
    css::sheet::ExternalReference external;
    if (data >>= external) {
        Place(nextExternal_ < native_.externals.size() ? native_.externals[nextExternal_++]
                                                       : u"#REF!");
        return true;
    }
    css::sheet::SingleReference single;
    css::sheet::ComplexReference complex;
    std::size_t lost = 0;
    if (data >>= single) {
        lost = LostParts(single);
    } else if (data >>= complex) {
        single = complex.Reference1;
        lost = LostParts(complex.Reference1) + LostParts(complex.Reference2);
    }
    if (lost == 0) return false;
    nextError_ += lost;
    Place(PrefixOf(single) + u"#REF!");
    return true;
}

std::u16string PrintableTokens::PrefixOf(const css::sheet::SingleReference& reference) const {
    if ((reference.Flags & Flags::SHEET_3D) == 0 || (reference.Flags & Flags::SHEET_DELETED) != 0)
        return {};
    const sal_Int32 sheet = (reference.Flags & Flags::SHEET_RELATIVE) != 0
                                ? at_.Sheet + reference.RelativeSheet
                                : reference.Sheet;
    const Reference<css::container::XIndexAccess> all(sheets_, UNO_QUERY_THROW);
    if (sheet < 0 || sheet >= all->getCount()) return {};
    return SheetPrefix(u"", NameOf(all->getByIndex(sheet)));
}

std::u16string PrintableTokens::PrefixOf(std::u16string_view word) const {
    std::u16string_view place = word.substr(0, word.rfind(u'#'));
    place = place.substr(0, place.find_last_of(u"!."));
    if (place.size() == word.size() || place.find(u':') != std::u16string_view::npos) return {};
    if (place.starts_with(u'$')) place.remove_prefix(1);
    const rtl::OUString name = ToOUString(Unquoted(place));
    if (name.isEmpty() || !sheets_->hasByName(name)) return {};
    return SheetPrefix(u"", NameOf(sheets_->getByName(name)));
}

}  // namespace korvane::calc

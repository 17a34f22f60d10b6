#include "bindings/calc/formula_text.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/AddressConvention.hpp>
#include <com/sun/star/sheet/ComplexReference.hpp>
#include <com/sun/star/sheet/ExternalReference.hpp>
#include <com/sun/star/sheet/FormulaLanguage.hpp>
#include <com/sun/star/sheet/FormulaMapGroup.hpp>
#include <com/sun/star/sheet/FormulaMapGroupSpecialOffset.hpp>
#include <com/sun/star/sheet/NameToken.hpp>
#include <com/sun/star/sheet/ReferenceFlags.hpp>
#include <com/sun/star/sheet/SingleReference.hpp>
#include <com/sun/star/sheet/XFormulaOpCodeMapper.hpp>
#include <utility>
#include <vector>

#include "base/text.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/excel_text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

// Stands for an error name while the office prints a formula: a text that no
// user writes (private-use characters), printed in quotes.
constexpr char16_t kPlaceholder = 0xE5C7;

template <class T>
Any ToAny(const T& value) {
    Any any;
    any <<= value;
    return any;
}

bool IsDeleted(const css::sheet::SingleReference& reference) {
    return (reference.Flags &
            (css::sheet::ReferenceFlags::COLUMN_DELETED | css::sheet::ReferenceFlags::ROW_DELETED |
             css::sheet::ReferenceFlags::SHEET_DELETED)) != 0;
}

bool IsDeletedReference(const Any& data) {
    css::sheet::SingleReference single;
    css::sheet::ComplexReference complex;
    if (data >>= single) return IsDeleted(single);
    if (data >>= complex) return IsDeleted(complex.Reference1) || IsDeleted(complex.Reference2);
    return false;
}

bool IsExternal(const Any& data) {
    css::sheet::ExternalReference external;
    return static_cast<bool>(data >>= external);
}

}  // namespace

FormulaText::FormulaText(const Reference<css::frame::XModel>& model, std::u16string ownBook)
    : ownBook_(std::move(ownBook)) {
    const Reference<css::lang::XMultiServiceFactory> services(model, UNO_QUERY_THROW);
    const Reference<css::sheet::XFormulaOpCodeMapper> mapper(
        services->createInstance(ToOUString(u"com.sun.star.sheet.FormulaOpCodeMapper")),
        UNO_QUERY_THROW);
    parser_.set(services->createInstance(ToOUString(u"com.sun.star.sheet.FormulaParser")),
                UNO_QUERY_THROW);

    const auto language = css::sheet::FormulaLanguage::XL_ENGLISH;
    auto map =
        mapper->getAvailableMappings(language, css::sheet::FormulaMapGroup::ALL_EXCEPT_SPECIAL);
    ReadOpCodes(map);
    // Elsewhere a "," also stands between the constants of an array.
    for (const auto& entry :
         mapper->getAvailableMappings(language, css::sheet::FormulaMapGroup::SEPARATORS)) {
        if (ToText(entry.Name) == u",") codes_.separator = entry.Token.OpCode;
    }
    const auto special =
        mapper->getAvailableMappings(language, css::sheet::FormulaMapGroup::SPECIAL);
    namespace Offset = css::sheet::FormulaMapGroupSpecialOffset;
    const auto specialCode = [&](sal_Int32 offset) {
        if (offset >= special.getLength()) Fail(u"This office's formulas are of an unknown kind");
        return special[offset].Token.OpCode;
    };
    codes_.push = specialCode(Offset::PUSH);
    codes_.name = specialCode(Offset::NAME);
    codes_.missing = specialCode(Offset::MISSING);
    codes_.bad = specialCode(Offset::BAD);
    codes_.databaseArea = specialCode(Offset::DB_AREA);
    codes_.spaces = specialCode(Offset::SPACES);

    // Calc spells the two reference operators in its own way even here.
    for (auto& entry : map) {
        if (entry.Token.OpCode == codes_.join) entry.Name = ToOUString(u",");
    }
    const Reference<css::beans::XPropertySet> settings(parser_, UNO_QUERY_THROW);
    settings->setPropertyValue(ToOUString(u"CompileEnglish"), ToAny(true));
    settings->setPropertyValue(ToOUString(u"OpCodeMap"), ToAny(map));
    settings->setPropertyValue(ToOUString(u"FormulaConvention"),
                               ToAny(sal_Int16{css::sheet::AddressConvention::XL_A1}));
}

void FormulaText::ReadOpCodes(
    const css::uno::Sequence<css::sheet::FormulaOpCodeMapEntry>& entries) {
    for (const auto& entry : entries) {
        const std::u16string name = ToText(entry.Name);
        const sal_Int32 code = entry.Token.OpCode;
        codes_.byName.emplace(name, code);
        if (name == u"(") codes_.open = code;
        if (name == u")") codes_.close = code;
        if (name == u"%") codes_.percent = code;
        if (name == u"!") codes_.intersection = code;
        if (name == u"~") codes_.join = code;
        if (name == u":") codes_.range = code;
        if (name == u"WEBSERVICE" || name == u"DDE" || name == u"RTD") codes_.fetching.insert(code);
        const char16_t first = name.empty() ? u' ' : name.front();
        if ((first >= u'A' && first <= u'Z') || first == u'_') codes_.functions.insert(code);
    }
}

Tokens FormulaText::Parse(std::u16string_view text, const css::table::CellAddress& at) const {
    return parser_->parseFormula(ToOUString(text), at);
}

Tokens FormulaText::Printable(const Tokens& tokens, std::u16string_view native,
                              std::vector<std::u16string>& placed) const {
    const auto errors = ErrorsIn(native);
    const auto tables = TableReferencesIn(native);
    std::size_t nextError = 0;
    std::size_t nextTable = 0;
    std::vector<Token> out;
    const auto place = [&](std::u16string text) {
        placed.push_back(std::move(text));
        out.emplace_back(codes_.push,
                         ToAny(ToOUString(std::u16string(placed.size(), kPlaceholder))));
    };
    css::sheet::NameToken name;
    for (sal_Int32 k = 0; k < tokens.getLength(); ++k) {
        const Token& token = tokens[k];
        if (IsDeletedReference(token.Data)) ++nextError;
        // A table's name is a token that no list of the office has; neither have
        // its brackets, two neighbouring numbers.
        const bool isTable = (token.Data >>= name) && token.OpCode != codes_.name &&
                             token.OpCode != codes_.databaseArea && k + 1 < tokens.getLength();
        if (isTable && nextTable < tables.size()) {
            place(tables[nextTable++]);
            const sal_Int32 open = tokens[k + 1].OpCode;
            int depth = 0;
            do {
                ++k;
                if (tokens[k].OpCode == open) ++depth;
                if (tokens[k].OpCode == open + 1) --depth;
            } while (depth > 0 && k + 1 < tokens.getLength());
        } else if (token.OpCode == codes_.push && !token.Data.hasValue()) {
            place(nextError < errors.size() ? errors[nextError] : u"#N/A");
            ++nextError;
        } else {
            out.push_back(token);
        }
    }
    return Tokens(out.data(), static_cast<sal_Int32>(out.size()));
}

std::u16string FormulaText::Print(const Tokens& read, const css::table::CellAddress& at,
                                  std::u16string_view native) const {
    std::vector<std::u16string> placed;
    const Tokens tokens = Printable(read, native, placed);
    std::u16string text = ToText(parser_->printFormula(tokens, at));
    // The longest first: each is contained in the ones after it.
    for (std::size_t k = placed.size(); k > 0; --k) {
        text = ReplaceAll(std::move(text), u"\"" + std::u16string(k, kPlaceholder) + u"\"",
                          placed[k - 1]);
    }
    return ShownText(text);
}

FormulaText::Reading FormulaText::Read(std::u16string_view shown, const css::table::CellAddress& at,
                                       Tokens& tokens) const {
    if (shown.starts_with(u'=')) shown.remove_prefix(1);
    if (!IsWellFormed(shown)) return Reading::kMalformed;
    const ParserText text = TextForParser(shown, ownBook_);
    if (text.otherBook) return Reading::kOutside;
    tokens = Mended(Parse(text.text, at));
    for (const auto& token : tokens) {
        if (codes_.fetching.count(token.OpCode) != 0 || IsExternal(token.Data))
            return Reading::kOutside;
    }
    return Reading::kReady;
}

// The parser leaves Excel's reference operators as it finds them: a blank stays
// a blank, and a "," outside a call's arguments an argument separator.
Tokens FormulaText::Mended(const Tokens& tokens) const {
    std::vector<Token> out;
    std::vector<bool> inCall;  // for each open bracket
    const auto endsOperand = [&](const Token& token) {
        return token.OpCode == codes_.push || token.OpCode == codes_.close ||
               token.OpCode == codes_.name || token.OpCode == codes_.bad;
    };
    for (sal_Int32 k = 0; k < tokens.getLength(); ++k) {
        Token token = tokens[k];
        if (token.OpCode == codes_.spaces) {
            const bool behind = !out.empty() && endsOperand(out.back());
            if (!behind || k + 1 == tokens.getLength()) continue;
            const sal_Int32 follows = tokens[k + 1].OpCode;
            const bool before = follows == codes_.push || follows == codes_.name ||
                                follows == codes_.bad || follows == codes_.open ||
                                codes_.functions.count(follows) != 0;
            if (!before) continue;
            token = Token(codes_.intersection, Any());
        } else if (token.OpCode == codes_.open) {
            inCall.push_back(!out.empty() &&
                             (codes_.functions.count(out.back().OpCode) != 0 ||
                              out.back().OpCode == codes_.bad || out.back().OpCode == codes_.name));
        } else if (token.OpCode == codes_.close) {
            if (!inCall.empty()) inCall.pop_back();
        } else if (token.OpCode == codes_.separator && (inCall.empty() || !inCall.back())) {
            token.OpCode = codes_.join;
        } else if (rtl::OUString name; token.OpCode == codes_.bad && (token.Data >>= name) &&
                                       name.indexOf(sal_Unicode{'!'}) >= 0) {
            // A sheet that is not there is a lost reference, not an unknown name.
            for (const auto& lost : Parse(u"INDIRECT(\"\")", {})) out.push_back(lost);
            continue;
        }
        out.push_back(token);
    }
    return Tokens(out.data(), static_cast<sal_Int32>(out.size()));
}

}  // namespace korvane::calc

#include "bindings/calc/formula_text.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/lang/XMultiServiceFactory.hpp>
#include <com/sun/star/sheet/AddressConvention.hpp>
#include <com/sun/star/sheet/ExternalReference.hpp>
#include <com/sun/star/sheet/FormulaLanguage.hpp>
#include <com/sun/star/sheet/FormulaMapGroup.hpp>
#include <com/sun/star/sheet/FormulaMapGroupSpecialOffset.hpp>
#include <com/sun/star/sheet/XFormulaOpCodeMapper.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <utility>
#include <vector>

#include "base/text.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/excel_text.h"
#include "bindings/calc/printable_tokens.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Any;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

namespace {

template <class T>
Any ToAny(const T& value) {
    Any any;
    any <<= value;
    return any;
}

// The office takes a Boolean of an array constant for a number without looking,
// and reads what happens to be in its place.
void MakeNumbers(Any& arrayConstant) {
    css::uno::Sequence<css::uno::Sequence<Any>> rows;
    if (!(arrayConstant >>= rows)) return;
    for (auto& row : rows) {
        for (auto& value : row) {
            bool flag = false;
            if (value >>= flag) value <<= flag ? 1.0 : 0.0;
        }
    }
    arrayConstant <<= rows;
}

bool IsExternal(const Any& data) {
    css::sheet::ExternalReference external;
    return static_cast<bool>(data >>= external);
}

}  // namespace

FormulaText::FormulaText(const Reference<css::frame::XModel>& model, std::u16string ownBook)
    : sheets_(Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY_THROW)->getSheets()),
      ownBook_(std::move(ownBook)) {
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
        if (name == u"{") codes_.arrayOpen = code;
        if (name == u"}") codes_.arrayClose = code;
        if (name == u"WEBSERVICE" || name == u"DDE" || name == u"RTD") codes_.fetching.insert(code);
        const char16_t first = name.empty() ? u' ' : name.front();
        if (std::u16string_view(u"+-*/^&=<>%").find(first) != std::u16string_view::npos)
            codes_.operators.insert(code);
        if ((first >= u'A' && first <= u'Z') || first == u'_') codes_.functions.insert(code);
    }
}

Tokens FormulaText::Parse(std::u16string_view text, const css::table::CellAddress& at) const {
    Tokens tokens = parser_->parseFormula(ToOUString(text), at);
    for (auto& token : tokens) {
        if (token.Data.getValueTypeClass() == css::uno::TypeClass_SEQUENCE) MakeNumbers(token.Data);
    }
    return tokens;
}

std::u16string FormulaText::Print(const Tokens& tokens, const css::table::CellAddress& at,
                                  std::u16string_view native) const {
    const PrintableTokens printable(tokens, at, native, codes_, sheets_);
    return ShownText(printable.Restored(ToText(parser_->printFormula(printable.tokens(), at))));
}

bool FormulaText::IsConstant(const Tokens& tokens) const {
    if (tokens.getLength() == 1) {
        return tokens[0].OpCode == codes_.push && !tokens[0].Data.hasValue();
    }
    const auto isCallOf = [&](const char16_t* name) {
        const auto known = codes_.byName.find(name);
        return known != codes_.byName.end() && known->second == tokens[0].OpCode;
    };
    return tokens.getLength() == 3 && (isCallOf(u"TRUE") || isCallOf(u"FALSE")) &&
           tokens[1].OpCode == codes_.open && tokens[2].OpCode == codes_.close;
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

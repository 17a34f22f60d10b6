#include "bindings/calc/calc_names.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XFormulaTokens.hpp>
#include <com/sun/star/sheet/XSheetCellRange.hpp>

#include "base/text.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

using NamesRef = Reference<css::sheet::XNamedRanges>;

NamesRef NamesOf(const Reference<css::uno::XInterface>& owner) {
    NamesRef names;
    Reference<css::beans::XPropertySet>(owner, UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(u"NamedRanges")) >>= names;
    return names;
}

std::u16string SheetNameOf(const SheetRef& sheet) {
    return ToText(Reference<css::container::XNamed>(sheet, UNO_QUERY_THROW)->getName());
}

bool IsOwnBook(const CalcDocument& document, std::u16string_view book) {
    return book.empty() || EqualIgnoringCase(book, document.FileName());
}

bool IsSame(const css::table::CellRangeAddress& a, const css::table::CellRangeAddress& b) {
    return a.Sheet == b.Sheet && a.StartRow == b.StartRow && a.EndRow == b.EndRow &&
           a.StartColumn == b.StartColumn && a.EndColumn == b.EndColumn;
}

CalcName::NamedRef FindCells(const NamesRef& names, const css::table::CellRangeAddress& wanted) {
    for (const auto& key : names->getElementNames()) {
        CalcName::NamedRef name;
        names->getByName(key) >>= name;
        const Reference<css::sheet::XCellRangeReferrer> referrer(name, UNO_QUERY);
        const CellRangeRef cells = referrer.is() ? referrer->getReferredCells() : CellRangeRef();
        const Reference<css::sheet::XCellRangeAddressable> addressable(cells, UNO_QUERY);
        if (addressable.is() && IsSame(addressable->getRangeAddress(), wanted)) return name;
    }
    return {};
}

}  // namespace

std::u16string CalcName::Name_() {
    return Ask(document_, [&] {
        const std::u16string name =
            ToText(Reference<css::container::XNamed>(name_, UNO_QUERY_THROW)->getName());
        return sheet_ ? SheetPrefix(u"", *sheet_) + name : name;
    });
}

std::u16string CalcName::RefersTo() {
    return Ask(document_, [&] {
        const auto tokens =
            Reference<css::sheet::XFormulaTokens>(name_, UNO_QUERY_THROW)->getTokens();
        return u"=" + document_->formulas().Print(tokens, document_->ActiveCell(),
                                                  ToText(name_->getContent()));
    });
}

host::NamePtr CalcNames::Item(std::u16string_view text) {
    return Ask(document_, [&]() -> host::NamePtr {
        SheetRef sheet = sheet_;
        std::u16string wanted(text);
        // A sheet's own name is also found through the workbook, by its sheet.
        if (text.find(u'!') != std::u16string_view::npos) {
            const auto parts = SplitReference(text);
            const auto found = parts ? document_->FindSheet(parts->sheet) : std::nullopt;
            if (!found || !IsOwnBook(*document_, parts->book)) return nullptr;
            const SheetRef named = document_->Sheet(*found);
            if (sheet.is() && SheetNameOf(sheet) != SheetNameOf(named)) return nullptr;
            sheet = named;
            wanted = parts->rest;
        }
        const NamesRef names =
            NamesOf(sheet.is() ? Reference<css::uno::XInterface>(sheet) : document_->model());
        const rtl::OUString key = ToOUString(wanted);
        if (!names.is() || !names->hasByName(key)) return nullptr;
        // Asked for in another case, the office would answer with that spelling.
        rtl::OUString spelled = key;
        for (const auto& own : names->getElementNames()) {
            if (own.equalsIgnoreAsciiCase(key)) spelled = own;
        }
        CalcName::NamedRef name;
        names->getByName(spelled) >>= name;
        std::optional<std::u16string> owner;
        if (sheet.is()) owner = SheetNameOf(sheet);
        return std::make_shared<CalcName>(document_, name, owner);
    });
}

CalcName::NamedRef FindNamedRange(const CalcDocument& document, int sheet,
                                  std::u16string_view name) {
    CalcName::NamedRef found;
    // A number or a cell cannot be a name: most words of a formula need no question.
    if (name.empty() || (name.front() >= u'0' && name.front() <= u'9') || ParseArea(name)) {
        return found;
    }
    const rtl::OUString key = ToOUString(name);
    NamesRef names = NamesOf(document.Sheet(sheet));
    if (!names.is() || !names->hasByName(key)) names = NamesOf(document.model());
    if (names.is() && names->hasByName(key)) names->getByName(key) >>= found;
    return found;
}

host::NamePtr NameOfCells(const DocumentPtr& document, const CellRangeRef& cells) {
    const auto wanted =
        Reference<css::sheet::XCellRangeAddressable>(cells, UNO_QUERY_THROW)->getRangeAddress();
    const SheetRef sheet =
        Reference<css::sheet::XSheetCellRange>(cells, UNO_QUERY_THROW)->getSpreadsheet();
    if (const auto name = FindCells(NamesOf(sheet), wanted); name.is()) {
        return std::make_shared<CalcName>(document, name, SheetNameOf(sheet));
    }
    const auto name =
        FindCells(NamesOf(Reference<css::uno::XInterface>(document->model())), wanted);
    if (!name.is()) return nullptr;
    return std::make_shared<CalcName>(document, name, std::nullopt);
}

}  // namespace korvane::calc

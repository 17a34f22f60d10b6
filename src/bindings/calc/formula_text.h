// A document's formulas as tokens and as Excel's text.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/FormulaOpCodeMapEntry.hpp>
#include <com/sun/star/sheet/FormulaToken.hpp>
#include <com/sun/star/sheet/XFormulaParser.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace korvane::calc {

using Token = com::sun::star::sheet::FormulaToken;
using Tokens = com::sun::star::uno::Sequence<Token>;

// The office's numbers of what the binding looks at in token lists.
struct OpCodes {
    sal_Int32 push = 0;
    sal_Int32 missing = 0;
    sal_Int32 bad = 0;  // a name that means nothing
    sal_Int32 name = 0;
    sal_Int32 spaces = 0;
    sal_Int32 separator = 0;
    sal_Int32 open = 0;
    sal_Int32 close = 0;
    sal_Int32 percent = 0;
    sal_Int32 intersection = 0;
    sal_Int32 join = 0;
    sal_Int32 range = 0;
    sal_Int32 databaseArea = 0;
    sal_Int32 arrayOpen = 0;
    sal_Int32 arrayClose = 0;
    std::set<sal_Int32> functions;
    std::set<sal_Int32> operators;               // of values, not of references
    std::set<sal_Int32> fetching;                // functions that reach outside the document
    std::map<std::u16string, sal_Int32> byName;  // functions and operators
};

class FormulaText {
public:
    // `ownBook` is the document's file name, which formulas may carry as a
    // prefix.
    FormulaText(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model,
                std::u16string ownBook);

    // Excel's text (without "=") of tokens at a cell. `native` is the office's
    // own text of the same formula: what the tokens have lost is taken from there.
    std::u16string Print(const Tokens& tokens, const com::sun::star::table::CellAddress& at,
                         std::u16string_view native) const;

    enum class Reading {
        kReady,
        kMalformed,  // no formula
        kOutside,    // it reaches outside the document and must not be evaluated
    };
    // The tokens of Excel's text (with or without "=") at a cell.
    Reading Read(std::u16string_view shown, const com::sun::star::table::CellAddress& at,
                 Tokens& tokens) const;

    // The tokens of a text in the parser's own spelling.
    Tokens Parse(std::u16string_view text, const com::sun::star::table::CellAddress& at) const;

    // Whether the tokens are a Boolean or an error and nothing else.
    bool IsConstant(const Tokens& tokens) const;

    const OpCodes& codes() const { return codes_; }

private:
    void ReadOpCodes(
        const com::sun::star::uno::Sequence<com::sun::star::sheet::FormulaOpCodeMapEntry>& entries);
    Tokens Mended(const Tokens& tokens) const;

    com::sun::star::uno::Reference<com::sun::star::sheet::XFormulaParser> parser_;
    com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheets> sheets_;
    std::u16string ownBook_;
    OpCodes codes_;
};

}  // namespace korvane::calc

// Tokens in a form that the office can print in full.
#pragma once

#include <com/sun/star/sheet/SingleReference.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <string>
#include <string_view>
#include <vector>

#include "bindings/calc/formula_text.h"
#include "bindings/calc/native_text.h"

namespace korvane::calc {

// Some tokens the office prints wrongly, or not at all: error names, array
// constants, references to tables, to other files and to what has been deleted.
// A text stands in for each of them while the office prints the rest.
class PrintableTokens {
public:
    using SheetsRef = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheets>;

    // `native` is the office's own text of the formula; `codes` must outlive this
    // object.
    PrintableTokens(const Tokens& read, const com::sun::star::table::CellAddress& at,
                    std::u16string_view native, const OpCodes& codes, const SheetsRef& sheets);

    Tokens tokens() const;
    // What was printed of tokens(), with the true texts back in their places.
    std::u16string Restored(std::u16string printed) const;

private:
    // Each takes what begins at `k` of read_ if it is of its kind, leaves `k` at its
    // last token and returns true.
    bool TakeArray(sal_Int32& k);
    bool TakeTable(sal_Int32& k);
    bool TakeLost(sal_Int32& k);
    bool TakeReference(sal_Int32& k);
    void Place(std::u16string text);
    std::u16string NextError();
    std::u16string PrefixOf(const com::sun::star::sheet::SingleReference& reference) const;
    // The prefix of a lost reference that is only left as a word: "data!#ref!", and
    // "$Data.#REF!5" in the spelling of ODF.
    std::u16string PrefixOf(std::u16string_view word) const;

    const Tokens& read_;
    com::sun::star::table::CellAddress at_;
    const OpCodes& codes_;
    SheetsRef sheets_;
    NativeParts native_;
    std::size_t nextError_ = 0;
    std::size_t nextArray_ = 0;
    std::size_t nextTable_ = 0;
    std::size_t nextExternal_ = 0;
    std::vector<Token> out_;
    std::vector<std::u16string> placed_;  // the k-th for k + 1 placeholder characters
};

}  // namespace korvane::calc

// Every function of Calc's own list: a part is worth what the cell would show.
#include <gtest/gtest.h>

#include <algorithm>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/sheet/FunctionArgument.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <set>
#include <string>
#include <vector>

#include "base/number.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "inside_office.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

struct Function {
    std::string name;
    int required = 0;
    int known = 0;
};

std::vector<Function> FunctionList() {
    const auto context = OfficeContext();
    const Reference<css::container::XIndexAccess> all(
        context->getServiceManager()->createInstanceWithContext(
            ToOUString(u"com.sun.star.sheet.FunctionDescriptions"), context),
        UNO_QUERY_THROW);
    std::vector<Function> functions;
    for (sal_Int32 k = 0; k < all->getCount(); ++k) {
        css::uno::Sequence<css::beans::PropertyValue> properties;
        all->getByIndex(k) >>= properties;
        Function function;
        for (const auto& property : properties) {
            rtl::OUString name;
            css::uno::Sequence<css::sheet::FunctionArgument> arguments;
            if (ToText(property.Name) == u"Name" && (property.Value >>= name))
                function.name = ToUtf8(ToText(name));
            if (ToText(property.Name) == u"Arguments" && (property.Value >>= arguments)) {
                function.known = arguments.getLength();
                for (const auto& argument : arguments)
                    function.required += argument.IsOptional ? 0 : 1;
            }
        }
        functions.push_back(std::move(function));
    }
    return functions;
}

// The call's text with a range for each bit of `ranges` and a number elsewhere.
std::string Call(const Function& function, int arguments, int ranges) {
    static constexpr const char* kRanges[] = {"$A$1:$A$4", "$B$1:$B$4", "$C$1:$C$4"};
    std::string out = "=" + function.name + "(";
    int next = 0;
    for (int k = 0; k < arguments; ++k) {
        if (k > 0) out += ";";
        out += (ranges >> k & 1) != 0 ? kRanges[next++ % 3] : "1";
    }
    return out + ")";
}

// Left out: those whose answer is another one each time, those that look at the
// kind of their argument, which is an error for a range in a cell beside it, and
// those that make an array whose layout a number says, for which a range stands here.
bool IsComparable(const std::string& name) {
    static const std::set<std::string> kOthers = {
        "RAND",       "RANDBETWEEN", "RAND.NV", "RANDBETWEEN.NV", "NOW",    "CURRENT",
        "INFO",       "ISERR",       "ISERROR", "ISNUMBER",       "ISTEXT", "ISNONTEXT",
        "ISNA",       "ISLOGICAL",   "ISBLANK", "ISFORMULA",      "TYPE",   "ERRORTYPE",
        "ERROR.TYPE", "LINEST",      "LOGEST",  "FOURIER"};
    // The office itself falls down over these with such arguments.
    return kOthers.count(name) == 0 && !name.starts_with("FORECAST.ETS");
}

// A date in the cell is a plain number as a part.
std::string Plain(const Value& value) {
    return value.AsDate() ? Shown(Value(value.AsDate()->serial)) : Shown(value);
}

// What a range of different numbers is never made into by a function of each of them.
bool IsOneValue(const Array& array) {
    return std::all_of(array.cells.begin(), array.cells.end(), [&](const Value& value) {
        return Shown(value) == Shown(array.cells.front());
    });
}

TEST(FunctionList, APartIsWorthWhatItsCellShows) {
    OpenBook book("functions.fods", FlatText({{"Data",
                                               {{1, 1, "1"},
                                                {1, 2, "4"},
                                                {1, 3, "-3"},
                                                {2, 1, "2"},
                                                {2, 2, "5"},
                                                {2, 3, "1"},
                                                {3, 1, "3"},
                                                {3, 2, "9"},
                                                {3, 3, "1"},
                                                {4, 1, "5"},
                                                {4, 2, "6"},
                                                {4, 3, "2"}}}}));
    // Rows without data: a function that takes a range for one of its cells finds none.
    sal_Int32 row = 9;
    int compared = 0;
    for (const Function& function : FunctionList()) {
        if (!IsComparable(function.name)) continue;
        const int most = std::min(function.required + 2, std::min(function.known, 6));
        for (int arguments = function.required; arguments <= most; ++arguments) {
            for (int ranges = 1; ranges < (1 << arguments); ++ranges) {
                const std::string call = Call(function, arguments, ranges);
                // Another cell each time: a result can leave a number format behind.
                const auto cell =
                    book.application().document()->Sheet(0)->getCellByPosition(5, row++);
                cell->setFormula(ToOUString(ToUtf16(call)));
                cell->getValue();
                if (cell->getError() != 0) continue;
                const auto range = book.Cell(u"Data!F" + NumberText(row));
                range->Select();
                const std::u16string text = *range->Formula().Text();
                const Value shown = range->Value();
                const Value part = book.Evaluate(text);
                if (part.AsObject()) continue;  // a reference
                ++compared;
                const Array* const array = part.AsArray();
                EXPECT_FALSE(array && IsOneValue(*array)) << ToUtf8(text);
                EXPECT_EQ(Plain(array ? array->cells.front() : part), Plain(shown)) << ToUtf8(text);
            }
        }
    }
    EXPECT_GT(compared, 100);
}

}  // namespace
}  // namespace korvane::calc::testing

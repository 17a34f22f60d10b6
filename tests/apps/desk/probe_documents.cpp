#include "probe_documents.h"

#include <algorithm>
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/beans/XPropertyState.hpp>
#include <com/sun/star/container/XEnumerationAccess.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XStatusListener.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/util/URLTransformer.hpp>
#include <com/sun/star/util/XModifiable2.hpp>
#include <com/sun/star/util/XProtectable.hpp>
#include <cppuhelper/implbase1.hxx>
#include <rtl/ref.hxx>
#include <vector>

#include "base/a1.h"
#include "base/text.h"
#include "bindings/calc/uno_text.h"
#include "bindings/calc/view_data.h"

namespace korvane::test {

namespace css = com::sun::star;
using calc::ToOUString;
using calc::ToText;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

// Cells beyond what a document uses may be tinted as well.
constexpr sal_Int32 kRows = 30;
constexpr sal_Int32 kColumns = 10;

std::string Narrow(const rtl::OUString& text) { return ToUtf8(ToText(text)); }
rtl::OUString Wide(const std::string& text) { return ToOUString(ToUtf16(text)); }

std::vector<Model> Documents(const Context& context) {
    std::vector<Model> documents;
    const auto all = css::frame::Desktop::create(context)->getComponents()->createEnumeration();
    while (all->hasMoreElements()) {
        const Model model(all->nextElement(), UNO_QUERY);
        if (Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY).is())
            documents.push_back(model);
    }
    return documents;
}

std::string TitleOf(const Model& model) {
    return Narrow(Reference<css::frame::XTitle>(model, UNO_QUERY_THROW)->getTitle());
}

template <class T>
T Get(const Reference<css::uno::XInterface>& object, const char16_t* name) {
    T value{};
    Reference<css::beans::XPropertySet>(object, UNO_QUERY_THROW)
        ->getPropertyValue(ToOUString(name)) >>= value;
    return value;
}

std::string LookOf(const Reference<css::table::XCell>& cell) {
    const auto fill = Get<sal_Int32>(cell, u"CellBackColor");
    const auto state = Reference<css::beans::XPropertyState>(cell, UNO_QUERY_THROW)
                           ->getPropertyState(ToOUString(u"CellBackColor"));
    // Columns that nothing was written to yet name none.
    std::string style = Narrow(Get<rtl::OUString>(cell, u"CellStyle"));
    if (style == "Default") style.clear();
    const auto format = Get<sal_Int32>(cell, u"NumberFormat");
    const bool isPlain = fill == -1 && state != css::beans::PropertyState_DIRECT_VALUE &&
                         style.empty() && format == 0;
    if (isPlain) return {};
    return " fill " + std::to_string(fill) +
           (state == css::beans::PropertyState_DIRECT_VALUE ? " own" : "") + " " + style + " " +
           std::to_string(format);
}

class Status : public cppu::WeakImplHelper1<css::frame::XStatusListener> {
public:
    void SAL_CALL statusChanged(const css::frame::FeatureStateEvent& event) override {
        state = event.State;
    }
    void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {}
    css::uno::Any state;
};

}  // namespace

Model FindDocument(const Context& context, const std::string& title) {
    const auto all = Documents(context);
    const auto found = std::find_if(all.begin(), all.end(),
                                    [&](const Model& model) { return TitleOf(model) == title; });
    return found == all.end() ? Model() : *found;
}

std::string TitlesOfDocuments(const Context& context) {
    std::string titles;
    for (const Model& model : Documents(context)) titles += TitleOf(model) + "|";
    return titles;
}

std::string EverythingIn(const Model& model) {
    const Reference<css::container::XIndexAccess> sheets(
        Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY_THROW)->getSheets(),
        UNO_QUERY_THROW);
    std::string text;
    for (sal_Int32 k = 0; k < sheets->getCount(); ++k) {
        const Reference<css::sheet::XSpreadsheet> sheet(sheets->getByIndex(k), UNO_QUERY_THROW);
        const std::string name =
            Narrow(Reference<css::container::XNamed>(sheet, UNO_QUERY_THROW)->getName());
        text += name + (Get<bool>(sheet, u"IsVisible") ? "" : " hidden") +
                (Reference<css::util::XProtectable>(sheet, UNO_QUERY_THROW)->isProtected()
                     ? " protected|"
                     : "|");
        const auto cursor = sheet->createCursor();
        Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
        const auto end = Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)
                             ->getRangeAddress();
        for (sal_Int32 row = 0; row <= std::max(end.EndRow, kRows); ++row) {
            for (sal_Int32 column = 0; column <= std::max(end.EndColumn, kColumns); ++column) {
                const auto cell = sheet->getCellByPosition(column, row);
                const std::string formula = Narrow(cell->getFormula());
                // Where whole rows have a fill, the last column of the used area is
                // the last one that Calc has had a reason to make.
                if (formula.empty() && (row > kRows || column > kColumns)) continue;
                const std::string all = formula + LookOf(cell);
                if (all.empty()) continue;
                text += name + "." +
                        ToUtf8(AreaText({row + 1, column + 1, row + 1, column + 1}, false, false)) +
                        " " + all + "|";
            }
        }
    }
    return text;
}

std::string StepsOf(const Model& model) {
    const auto undo =
        Reference<css::document::XUndoManagerSupplier>(model, UNO_QUERY_THROW)->getUndoManager();
    std::string text = "undo";
    for (const auto& title : undo->getAllUndoActionTitles()) text += "|" + Narrow(title);
    text += " redo";
    for (const auto& title : undo->getAllRedoActionTitles()) text += "|" + Narrow(title);
    return text;
}

bool IsLocked(const Model& model) {
    const auto undo =
        Reference<css::document::XUndoManagerSupplier>(model, UNO_QUERY_THROW)->getUndoManager();
    return undo->isLocked() || model->hasControllersLocked() ||
           !Reference<css::util::XModifiable2>(model, UNO_QUERY_THROW)->isSetModifiedEnabled() ||
           !Get<bool>(model, u"IsUndoEnabled");
}

std::string CursorOf(const Model& model) {
    const auto cell = calc::ActiveCellOfView(model->getCurrentController());
    if (!cell) return "none";
    const Reference<css::container::XIndexAccess> sheets(
        Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY_THROW)->getSheets(),
        UNO_QUERY_THROW);
    const Reference<css::container::XNamed> sheet(sheets->getByIndex(cell->Sheet), UNO_QUERY_THROW);
    return Narrow(sheet->getName()) + "." +
           ToUtf8(AreaText({cell->Row + 1, cell->Column + 1, cell->Row + 1, cell->Column + 1},
                           false, false));
}

std::string SelectionMode(const Context& context, const Model& model) {
    const Reference<css::frame::XDispatchProvider> frame(model->getCurrentController()->getFrame(),
                                                         UNO_QUERY_THROW);
    css::util::URL url;
    url.Complete = ToOUString(u".uno:StatusSelectionMode");
    css::util::URLTransformer::create(context)->parseStrict(url);
    const auto dispatch = frame->queryDispatch(url, rtl::OUString(), 0);
    if (!dispatch.is()) return "none";
    const rtl::Reference<Status> status(new Status);
    dispatch->addStatusListener(status.get(), url);
    dispatch->removeStatusListener(status.get(), url);
    rtl::OUString text;
    sal_Int32 number = -1;
    if (status->state >>= text) return Narrow(text);
    return (status->state >>= number) ? std::to_string(number) : "unknown";
}

std::string RunCommand(const Context& context, const Model& model, const std::string& command) {
    const auto blank = command.find(' ');
    css::uno::Sequence<css::beans::PropertyValue> arguments;
    if (blank != std::string::npos) {
        const auto is = command.find('=', blank);
        const std::string value = command.substr(is + 1);
        arguments.realloc(1);
        auto& argument = arguments.getArray()[0];
        argument.Name = Wide(command.substr(blank + 1, is - blank - 1));
        if (argument.Name.endsWith(ToOUString(u"Color"))) {
            argument.Value <<= static_cast<sal_Int32>(std::stol(value));
        } else {
            argument.Value <<= Wide(value);
        }
    }
    const Reference<css::frame::XDispatchProvider> frame(model->getCurrentController()->getFrame(),
                                                         UNO_QUERY_THROW);
    css::frame::DispatchHelper::create(context)->executeDispatch(
        frame, Wide(command.substr(0, blank)), rtl::OUString(), 0, arguments);
    return "done";
}

void TreatSheet(const Model& model, const std::string& how, const std::string& sheet) {
    const Reference<css::uno::XInterface> found(
        Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY_THROW)
            ->getSheets()
            ->getByName(Wide(sheet)),
        UNO_QUERY_THROW);
    const Reference<css::util::XProtectable> protectable(found, UNO_QUERY_THROW);
    if (how == "protect") {
        protectable->protect(rtl::OUString());
    } else if (how == "unprotect") {
        protectable->unprotect(rtl::OUString());
    } else {
        css::uno::Any shown;
        shown <<= how == "show";
        Reference<css::beans::XPropertySet>(found, UNO_QUERY_THROW)
            ->setPropertyValue(ToOUString(u"IsVisible"), shown);
    }
}

}  // namespace korvane::test

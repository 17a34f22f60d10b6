// Answers a test outside the office, by lines on a socket, what the documents in
// it hold. Has nothing to do with the add-in beside it.
#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/frame/XTitle.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XCellRangeReferrer.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/sheet/XUsedAreaCursor.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>
#include <string>
#include <utility>

#include "base/a1.h"
#include "base/text.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/desk/user_business.h"
#include "bindings/calc/uno_text.h"
#include "probe_documents.h"
#include "support/office_orders.h"
#include "support/office_places.h"

namespace korvane::test {
namespace {

namespace css = com::sun::star;
using calc::ToOUString;
using calc::ToText;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

std::string Narrow(const rtl::OUString& text) { return ToUtf8(ToText(text)); }

// Calls `with` for each cell that may hold anything.
template <class With>
void ForEachCell(const Reference<css::sheet::XSpreadsheetDocument>& document, With&& with) {
    const Reference<css::container::XIndexAccess> sheets(document->getSheets(), UNO_QUERY_THROW);
    for (sal_Int32 k = 0; k < sheets->getCount(); ++k) {
        const Reference<css::sheet::XSpreadsheet> sheet(sheets->getByIndex(k), UNO_QUERY_THROW);
        const auto cursor = sheet->createCursor();
        Reference<css::sheet::XUsedAreaCursor>(cursor, UNO_QUERY_THROW)->gotoEndOfUsedArea(false);
        const auto end = Reference<css::sheet::XCellRangeAddressable>(cursor, UNO_QUERY_THROW)
                             ->getRangeAddress();
        const std::string name =
            Narrow(Reference<css::container::XNamed>(sheet, UNO_QUERY_THROW)->getName());
        for (sal_Int32 row = 0; row <= end.EndRow; ++row) {
            for (sal_Int32 column = 0; column <= end.EndColumn; ++column) {
                with(name + "." +
                         ToUtf8(AreaText({row + 1, column + 1, row + 1, column + 1}, false, false)),
                     sheet->getCellByPosition(column, row));
            }
        }
    }
}

class Probe {
public:
    explicit Probe(Context context) : context_(std::move(context)) {}

    std::string Do(const std::string& line) {
        try {
            const auto blank = line.find(' ');
            const std::string order = line.substr(0, blank);
            const std::string with = blank == std::string::npos ? "" : line.substr(blank + 1);
            if (order == "in") return InDocument(with);
            if (order == "titles") return TitlesOfDocuments(context_);
            if (order == "everything") return EverythingIn(Asked());
            if (order == "flags") return Flags();
            if (order == "steps") return StepsOf(Asked());
            if (order == "cursor") return CursorOf(Asked());
            if (order == "mode") return SelectionMode(context_, Asked());
            if (order == "run") return RunCommand(context_, Asked(), with);
            if (order == "sheet") return Sheet(with);
            if (order == "cell") return PlaceOfCell(context_, with);
            if (order == "button") return PlaceOfButton(context_, with);
            if (order == "openreadonly") return Open(with, true);
            if (order == "ready")
                return Model().is() && Model()->getCurrentController().is() ? "yes" : "no";
            if (order == "addin") return HasMenu() ? "yes" : "no";
            if (order == "editing") return IsEditing() ? "yes" : "no";
            if (order == "state") return State();
            if (order == "cells") return Cells();
            if (order == "fills") return Fills();
            if (order == "select") return Select(with);
            if (order == "put") return Put(with);
            if (order == "open") return Open(with);
            if (order == "close") return Close();
            if (order == "quit") {
                return Desktop()->terminate() ? "done" : "refused";
            }
            return "what?";
        } catch (const css::uno::Exception& error) {
            return "failed: " + Narrow(error.Message);
        }
    }

private:
    Reference<css::frame::XDesktop2> Desktop() const {
        return css::frame::Desktop::create(context_);
    }
    // "TITLE ORDER": the order is meant for this document.
    std::string InDocument(const std::string& with) {
        const auto blank = with.find(' ');
        meant_ = FindDocument(context_, with.substr(0, blank));
        if (!meant_.is()) return "no such document";
        return Do(with.substr(blank + 1));
    }
    // "hide NAME"
    std::string Sheet(const std::string& with) const {
        const auto blank = with.find(' ');
        TreatSheet(Asked(), with.substr(0, blank), with.substr(blank + 1));
        return "done";
    }
    Reference<css::frame::XModel> Model() const {
        if (meant_.is()) return meant_;
        const auto frame = Desktop()->getCurrentFrame();
        const auto controller = frame.is() ? frame->getController() : nullptr;
        const auto model = controller.is() ? controller->getModel() : nullptr;
        return Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY).is() ? model : nullptr;
    }
    Reference<css::frame::XModel> Asked() const { return {Model(), UNO_QUERY_THROW}; }
    Reference<css::sheet::XSpreadsheetDocument> Document() const {
        return Reference<css::sheet::XSpreadsheetDocument>(Model(), UNO_QUERY_THROW);
    }

    // The add-in has started: its menu is there.
    bool IsEditing() const {
        return calc::IsEditing(context_, Model()->getCurrentController()->getFrame());
    }
    bool HasMenu() const {
        const auto menus = calc::SpreadsheetModule(context_)->getSettings(
            ToOUString(u"private:resource/menubar/menubar"), false);
        return HasLabel(menus, ToOUString(u"Korvane E~xplorer"));
    }
    static bool HasLabel(const Reference<css::container::XIndexAccess>& entries,
                         const rtl::OUString& wanted) {
        for (sal_Int32 k = 0; entries.is() && k < entries->getCount(); ++k) {
            css::uno::Sequence<css::beans::PropertyValue> entry;
            entries->getByIndex(k) >>= entry;
            for (const auto& property : entry) {
                rtl::OUString label;
                Reference<css::container::XIndexAccess> inner;
                if ((property.Value >>= label) && label == wanted) return true;
                if ((property.Value >>= inner) && HasLabel(inner, wanted)) return true;
            }
        }
        return false;
    }

    std::string State() const {
        const auto model = Model();
        if (!model.is()) return "none";
        const Reference<css::view::XSelectionSupplier> view(model->getCurrentController(),
                                                            UNO_QUERY_THROW);
        rtl::OUString selected;
        const Reference<css::beans::XPropertySet> cells(view->getSelection(), UNO_QUERY);
        if (cells.is()) cells->getPropertyValue(ToOUString(u"AbsoluteName")) >>= selected;
        const auto undo = Reference<css::document::XUndoManagerSupplier>(model, UNO_QUERY_THROW)
                              ->getUndoManager();
        const Reference<css::util::XModifiable> modifiable(model, UNO_QUERY_THROW);
        return Narrow(Reference<css::frame::XTitle>(model, UNO_QUERY_THROW)->getTitle()) +
               " selected " + Narrow(selected) + " modified " +
               std::to_string(modifiable->isModified()) + " undo " +
               std::to_string(undo->getAllUndoActionTitles().getLength()) + " locked " +
               std::to_string(IsLocked(model));
    }
    // What State says of anything but the selection.
    std::string Flags() const {
        const std::string state = State();
        return state.substr(state.rfind(" modified ") + 1);
    }
    std::string Cells() const {
        std::string text;
        ForEachCell(Document(), [&](const std::string& name, const auto& cell) {
            if (!cell->getFormula().isEmpty()) text += name + Narrow(cell->getFormula()) + "|";
        });
        return text;
    }
    std::string Fills() const {
        std::string text;
        ForEachCell(Document(), [&](const std::string& name, const auto& cell) {
            sal_Int32 fill = -1;
            Reference<css::beans::XPropertySet>(cell, UNO_QUERY_THROW)
                ->getPropertyValue(ToOUString(u"CellBackColor")) >>= fill;
            if (fill != -1) text += name + "=" + std::to_string(fill) + " ";
        });
        return text;
    }
    Reference<css::table::XCellRange> CellsAt(const std::string& address) const {
        const auto dot = address.find('.');
        const auto sheets = Document()->getSheets();
        const Reference<css::sheet::XSpreadsheet> sheet(
            sheets->getByName(ToOUString(ToUtf16(address.substr(0, dot)))), UNO_QUERY_THROW);
        return sheet->getCellRangeByName(ToOUString(ToUtf16(address.substr(dot + 1))));
    }
    std::string Select(const std::string& address) const {
        const auto controller = Model()->getCurrentController();
        const auto cells = CellsAt(address);
        css::uno::Any selected;
        selected <<= cells;
        const Reference<css::sheet::XSpreadsheet> sheet(
            Document()->getSheets()->getByName(
                ToOUString(ToUtf16(address.substr(0, address.find('.'))))),
            UNO_QUERY_THROW);
        Reference<css::sheet::XSpreadsheetView>(controller, UNO_QUERY_THROW)->setActiveSheet(sheet);
        Reference<css::view::XSelectionSupplier>(controller, UNO_QUERY_THROW)->select(selected);
        return "done";
    }
    // "Sheet.A1 FORMULA"
    std::string Put(const std::string& with) const {
        const auto blank = with.find(' ');
        CellsAt(with.substr(0, blank))
            ->getCellByPosition(0, 0)
            ->setFormula(ToOUString(ToUtf16(with.substr(blank + 1))));
        return "done";
    }
    std::string Open(const std::string& path, bool readOnly = false) const {
        const Reference<css::frame::XComponentLoader> loader(Desktop(), UNO_QUERY_THROW);
        css::beans::PropertyValue argument;
        argument.Name = ToOUString(u"ReadOnly");
        argument.Value <<= readOnly;
        const auto opened = loader->loadComponentFromURL(
            ToOUString(ToUtf16("file://" + path)), ToOUString(u"_default"), 0, {&argument, 1});
        return opened.is() ? "done" : "failed";
    }
    std::string Close() const {
        const Reference<css::util::XCloseable> model(Model(), UNO_QUERY_THROW);
        Reference<css::util::XModifiable>(model, UNO_QUERY_THROW)->setModified(false);
        model->close(true);
        return "done";
    }

    Context context_;
    Reference<css::frame::XModel> meant_;
};

}  // namespace
}  // namespace korvane::test

extern "C" SAL_DLLPUBLIC_EXPORT com::sun::star::uno::XInterface* korvane_test_probe(
    com::sun::star::uno::XComponentContext* context,
    const com::sun::star::uno::Sequence<com::sun::star::uno::Any>& /*arguments*/) {
    using namespace korvane::test;
    return MakeOrderJob(
        context, u"org.korvane.test.Probe",
        [context = Context(context)](const std::string& line) { return Probe(context).Do(line); });
}

#include "tint_orders.h"

#include <signal.h>
#include <unistd.h>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/document/XDocumentRecovery.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/frame/DispatchHelper.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/view/XPrintable.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "base/number.h"
#include "base/text.h"
#include "bindings/calc/calc_range.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc::testing {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

namespace {

using Arguments = css::uno::Sequence<css::beans::PropertyValue>;

css::beans::PropertyValue Argument(const char16_t* name, const css::uno::Any& value) {
    css::beans::PropertyValue argument;
    argument.Name = ToOUString(name);
    argument.Value = value;
    return argument;
}

rtl::OUString Url(const std::string& path) { return ToOUString(ToUtf16("file://" + path)); }

}  // namespace

OpenDocument& TintOrders::Active() {
    OpenDocument* const open = documents_ ? documents_->Active() : nullptr;
    if (open == nullptr) Fail(u"no document");
    return *open;
}

host::RangePtr TintOrders::Cells(const std::string& reference) {
    const DocumentPtr document = Active().document;
    const auto dot = reference.find('.');
    const int sheet = dot == std::string::npos ? 0 : std::stoi(reference.substr(0, dot));
    const std::string cells = dot == std::string::npos ? reference : reference.substr(dot + 1);
    const CellBlock block =
        BlockOf(document->Sheet(sheet)->getCellRangeByName(ToOUString(ToUtf16(cells))));
    return CalcRange::Make(
        document, sheet,
        {block.StartRow + 1, block.StartColumn + 1, block.EndRow + 1, block.EndColumn + 1});
}

std::string TintOrders::Tint(const std::string& reference) {
    const auto cells = Cells(reference);
    saved_[reference] = cells->Interior()->ColorIndex();
    cells->Interior()->SetColorIndex(Value(33));
    return "done";
}

// The colour as six digits and whether it is the cells' own.
std::string TintOrders::Look(const std::string& reference) {
    const DocumentPtr document = Active().document;
    const auto dot = reference.find('.');
    const int sheet = dot == std::string::npos ? 0 : std::stoi(reference.substr(0, dot));
    const std::string name = dot == std::string::npos ? reference : reference.substr(dot + 1);
    const Fills fills =
        FillsOf(document->Sheet(sheet)->getCellRangeByName(ToOUString(ToUtf16(name))));
    if (!fills.AreOne()) return "mixed";
    const Fill fill = fills.parts.front().fill;
    return std::to_string(fill.color) + (fill.isOwn ? " own" : " default");
}

void TintOrders::Store(const std::string& how, const std::string& path) {
    const auto model = Active().document->model();
    const Reference<css::frame::XStorable> storable(model, UNO_QUERY_THROW);
    css::uno::Any filter;
    filter <<= ToOUString(path.ends_with("xlsx")   ? u"Calc MS Excel 2007 XML"
                          : path.ends_with("fods") ? u"OpenDocument Spreadsheet Flat XML"
                                                   : u"calc8");
    css::beans::PropertyValue argument = Argument(u"FilterName", filter);
    const Arguments arguments(&argument, 1);
    if (how == "save") storable->store();
    if (how == "saveas") storable->storeAsURL(Url(path), arguments);
    if (how == "export") storable->storeToURL(Url(path), arguments);
    if (how == "recovery") {
        Reference<css::document::XDocumentRecovery>(model, UNO_QUERY_THROW)
            ->storeToRecoveryFile(Url(path), arguments);
    }
}

void TintOrders::Dispatch(const std::string& command) {
    css::frame::DispatchHelper::create(context_)->executeDispatch(
        Reference<css::frame::XDispatchProvider>(documents_->ActiveFrame(), UNO_QUERY_THROW),
        ToOUString(ToUtf16(command)), rtl::OUString(), 0, Arguments());
}

void TintOrders::Print(const std::string& path) {
    css::uno::Any file;
    file <<= Url(path);
    css::uno::Any yes;
    yes <<= true;
    css::beans::PropertyValue arguments[] = {Argument(u"FileName", file), Argument(u"Wait", yes)};
    Reference<css::view::XPrintable>(Active().document->model(), UNO_QUERY_THROW)
        ->print(Arguments(arguments, 2));
}

std::string TintOrders::Carry(const std::string& order, const std::string& argument) {
    if (order == "guard") {
        documents_ = std::make_unique<OpenDocuments>(context_);
        guard_ = std::make_unique<TintGuard>(context_, argument,
                                             [this](const TintGuard::Model& model) -> DocumentPtr {
                                                 auto* const open = documents_->Of(model);
                                                 return open != nullptr ? open->document : nullptr;
                                             });
        guard_->Look(Active().document->model());
        return "done";
    }
    if (order == "unguard") return guard_.reset(), "done";
    if (order == "load") {
        const auto loaded = css::frame::Desktop::create(context_)->loadComponentFromURL(
            Url(argument), ToOUString(u"_blank"), 0, Arguments());
        const Reference<css::frame::XModel> model(loaded, UNO_QUERY_THROW);
        model->getCurrentController()->getFrame()->activate();
        if (guard_) guard_->Look(model);
        return "done";
    }
    if (order == "shut") {
        Reference<css::util::XCloseable>(Active().document->model(), UNO_QUERY_THROW)->close(true);
        return "done";
    }
    if (order == "tint") return Tint(argument);
    if (order == "untint") {
        Cells(argument)->Interior()->SetColorIndex(saved_.at(argument));
        return "done";
    }
    if (order == "look") return Look(argument);
    // "0 Name": a copy of the sheet with this number, behind all.
    if (order == "copysheet" || order == "removesheet") {
        const Reference<css::sheet::XSpreadsheetDocument> book(Active().document->model(),
                                                               UNO_QUERY_THROW);
        const auto sheets = book->getSheets();
        if (order == "removesheet")
            return sheets->removeByName(ToOUString(ToUtf16(argument))), "done";
        const int from = std::stoi(argument);
        sheets->copyByName(ToOUString(Active().document->SheetName(from)),
                           ToOUString(ToUtf16(argument.substr(argument.find(' ') + 1))),
                           static_cast<sal_Int16>(Active().document->SheetCount()));
        return "done";
    }
    // For good, as a user does.
    if (order == "colour") {
        css::uno::Any color;
        color <<= sal_Int32{0x123456};
        Reference<css::beans::XPropertySet>(
            Active().document->Sheet(0)->getCellRangeByName(ToOUString(ToUtf16(argument))),
            UNO_QUERY_THROW)
            ->setPropertyValue(ToOUString(u"CellBackColor"), color);
        return "done";
    }
    if (order == "write") {
        const auto blank = argument.find(' ');
        Cells(argument.substr(0, blank))->SetFormula(ToUtf16(argument.substr(blank + 1)));
        return "done";
    }
    if (order == "type") {
        const auto blank = argument.find(' ');
        Active()
            .document->Sheet(0)
            ->getCellRangeByName(ToOUString(ToUtf16(argument.substr(0, blank))))
            ->getCellByPosition(0, 0)
            ->setFormula(ToOUString(ToUtf16(argument.substr(blank + 1))));
        return "done";
    }
    if (order == "formula") return ToUtf8(*Cells(argument)->Formula().Text());
    if (order == "save" || order == "saveas" || order == "export" || order == "recovery") {
        return Store(order, argument), "done";
    }
    if (order == "print") return Print(argument), "done";
    if (order == "select") {
        css::uno::Any cells;
        cells <<= Active().document->Sheet(0)->getCellRangeByName(ToOUString(ToUtf16(argument)));
        Reference<css::view::XSelectionSupplier>(Active().document->controller(), UNO_QUERY_THROW)
            ->select(cells);
        return "done";
    }
    if (order == "dispatch") return Dispatch(argument), "done";
    if (order == "state") {
        const auto& document = *Active().document;
        return std::string(document.modifiable()->isModified() ? "modified" : "unmodified") + " " +
               std::to_string(document.undoManager()->getAllUndoActionTitles().getLength()) + " " +
               std::to_string(document.SheetCount());
    }
    if (order == "reset") return Active().document->modifiable()->setModified(false), "done";
    if (order == "die") ::kill(::getpid(), SIGKILL);
    return "what?";
}

}  // namespace korvane::calc::testing

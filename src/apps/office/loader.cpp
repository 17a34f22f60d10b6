#include "apps/office/loader.h"

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNameAccess.hpp>
#include <com/sun/star/document/MacroExecMode.hpp>
#include <com/sun/star/document/UpdateDocMode.hpp>
#include <com/sun/star/document/XTypeDetection.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/lang/XMultiComponentFactory.hpp>
#include <com/sun/star/lang/XServiceInfo.hpp>
#include <com/sun/star/sheet/CellFlags.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeData.hpp>
#include <com/sun/star/sheet/XCellRangesQuery.hpp>
#include <com/sun/star/sheet/XSheetCellRanges.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/task/DocumentMSPasswordRequest.hpp>
#include <com/sun/star/task/DocumentPasswordRequest.hpp>
#include <com/sun/star/task/XInteractionAbort.hpp>
#include <com/sun/star/task/XInteractionApprove.hpp>
#include <com/sun/star/task/XInteractionHandler.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <com/sun/star/util/XModifiable2.hpp>
#include <cppuhelper/implbase1.hxx>
#include <fstream>
#include <osl/file.hxx>
#include <string_view>
#include <vector>

#include "base/text.h"
#include "bindings/calc/uno_text.h"

namespace korvane::office {

namespace css = com::sun::star;
using calc::ToOUString;
using calc::ToText;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;
using Context = Reference<css::uno::XComponentContext>;
using Properties = css::uno::Sequence<css::beans::PropertyValue>;

namespace {

// Answers every question with "no", and remembers that a password was asked for.
class Refuse : public cppu::WeakImplHelper1<css::task::XInteractionHandler> {
public:
    void SAL_CALL handle(const Reference<css::task::XInteractionRequest>& request) override {
        const css::uno::Any question = request->getRequest();
        css::task::DocumentPasswordRequest own;
        css::task::DocumentMSPasswordRequest foreign;
        if ((question >>= own) || (question >>= foreign)) askedForPassword_ = true;
        for (const auto& continuation : request->getContinuations()) {
            const Reference<css::task::XInteractionAbort> abort(continuation, UNO_QUERY);
            if (abort.is()) return abort->select();
        }
    }
    bool askedForPassword() const { return askedForPassword_; }

private:
    bool askedForPassword_ = false;
};

template <class T>
css::beans::PropertyValue Property(const char16_t* name, const T& value) {
    css::beans::PropertyValue property;
    property.Name = ToOUString(name);
    property.Value <<= value;
    return property;
}

rtl::OUString TextOf(const Properties& properties, const char16_t* name) {
    rtl::OUString value;
    const rtl::OUString wanted = ToOUString(name);
    for (const auto& property : properties) {
        if (property.Name == wanted) property.Value >>= value;
    }
    return value;
}

// The filter that the office would take, and whether it makes a spreadsheet.
// Asking before loading keeps a text or a picture from being opened at all.
// Some kinds of files already ask for a password to be told apart.
std::u16string SpreadsheetFilter(const Context& context, const rtl::OUString& url,
                                 const Reference<css::task::XInteractionHandler>& answers) {
    const auto services = context->getServiceManager();
    const Reference<css::document::XTypeDetection> detection(
        services->createInstanceWithContext(ToOUString(u"com.sun.star.document.TypeDetection"),
                                            context),
        UNO_QUERY_THROW);
    const css::beans::PropertyValue file[] = {Property(u"URL", url),
                                              Property(u"InteractionHandler", answers)};
    Properties described(file, 2);
    const rtl::OUString type = detection->queryTypeByDescriptor(described, true);
    if (type.isEmpty()) return {};
    rtl::OUString filter = TextOf(described, u"FilterName");
    if (filter.isEmpty()) {
        Properties details;
        Reference<css::container::XNameAccess>(detection, UNO_QUERY_THROW)->getByName(type) >>=
            details;
        filter = TextOf(details, u"PreferredFilter");
    }
    const Reference<css::container::XNameAccess> filters(
        services->createInstanceWithContext(ToOUString(u"com.sun.star.document.FilterFactory"),
                                            context),
        UNO_QUERY_THROW);
    if (filter.isEmpty() || !filters->hasByName(filter)) return {};
    Properties details;
    filters->getByName(filter) >>= details;
    if (TextOf(details, u"DocumentService") !=
        ToOUString(u"com.sun.star.sheet.SpreadsheetDocument"))
        return {};
    return ToText(filter);
}

// A page or a query may name addresses to be fetched; it is no workbook either.
bool IsPage(std::u16string_view filter) {
    return ContainsIgnoringCase(filter, u"html") || ContainsIgnoringCase(filter, u"WebQuery");
}

// Whatever is no other kind of file could be a text with separators: only one
// that says so by its name and holds no binary data is taken as a workbook.
bool IsSeparatedText(const std::string& path) {
    const auto hasEnding = [&](std::string_view ending) {
        return path.size() > ending.size() &&
               EqualIgnoringCase(ToUtf16(path.substr(path.size() - ending.size())),
                                 ToUtf16(ending));
    };
    if (!hasEnding(".csv") && !hasEnding(".tsv") && !hasEnding(".tab")) return false;
    std::ifstream in(path, std::ios::binary);
    std::string start(65'536, '\0');
    in.read(start.data(), static_cast<std::streamsize>(start.size()));
    start.resize(static_cast<std::size_t>(in.gcount()));
    return start.find('\0') == std::string::npos;
}

// Reads every formula's result: the office calculates those that it does not have.
void ReadResults(const Reference<css::frame::XModel>& model) {
    const Reference<css::container::XIndexAccess> sheets(
        Reference<css::sheet::XSpreadsheetDocument>(model, UNO_QUERY_THROW)->getSheets(),
        UNO_QUERY_THROW);
    for (sal_Int32 k = 0; k < sheets->getCount(); ++k) {
        Reference<css::sheet::XSpreadsheet> sheet;
        sheets->getByIndex(k) >>= sheet;
        const auto formulas = Reference<css::sheet::XCellRangesQuery>(sheet, UNO_QUERY_THROW)
                                  ->queryContentCells(css::sheet::CellFlags::FORMULA);
        for (const auto& part : formulas->getRangeAddresses()) {
            const auto cells = sheet->getCellRangeByPosition(part.StartColumn, part.StartRow,
                                                             part.EndColumn, part.EndRow);
            Reference<css::sheet::XCellRangeData>(cells, UNO_QUERY_THROW)->getDataArray();
        }
    }
}

// In a workbook of manual calculation a formula whose result the file does not
// hold would be worth 0 until it is written again, and to the office some
// constants of Excel's are such formulas. What the file does hold stays.
void CalculateWhatHasNoResult(const Reference<css::frame::XModel>& model) {
    const Reference<css::sheet::XCalculatable> calculation(model, UNO_QUERY_THROW);
    if (calculation->isAutomaticCalculationEnabled()) return;
    const Reference<css::util::XModifiable2> modifiable(model, UNO_QUERY_THROW);
    const bool wasEnabled = modifiable->disableSetModified();
    calculation->enableAutomaticCalculation(true);
    ReadResults(model);
    calculation->enableAutomaticCalculation(false);
    if (wasEnabled) modifiable->enableSetModified();
}

}  // namespace

Reference<css::frame::XModel> OpenWorkbook(const Context& context, const std::string& path) {
    const Reference<Refuse> refuse(new Refuse);
    const auto fail = [&](const char* why) -> void {
        throw NotAWorkbook(
            refuse->askedForPassword()
                ? "is protected by a password; save a copy without one and explore that"
                : why);
    };
    try {
        rtl::OUString url;
        osl::FileBase::getFileURLFromSystemPath(ToOUString(ToUtf16(path)), url);
        const std::u16string filter = SpreadsheetFilter(context, url, refuse.get());
        const bool isText = filter.starts_with(u"Text - txt");
        if (filter.empty() || IsPage(filter) || (isText && !IsSeparatedText(path)))
            fail("is not a workbook that LibreOffice Calc can read");

        std::vector<css::beans::PropertyValue> how{
            Property(u"Hidden", true),
            Property(u"FilterName", ToOUString(filter)),
            Property(u"MacroExecutionMode", sal_Int16{css::document::MacroExecMode::NEVER_EXECUTE}),
            Property(u"UpdateDocMode", sal_Int16{css::document::UpdateDocMode::NO_UPDATE}),
            Property(u"InteractionHandler",
                     Reference<css::task::XInteractionHandler>(refuse.get())),
        };
        if (isText) {
            // Comma, quotes, UTF-8, from line 1. As in Excel, what begins with "=" is
            // a formula all the same.
            how.push_back(Property(u"FilterOptions",
                                   ToOUString(u"44,34,76,1,,0,false,true,false,false,false,-1")));
        }
        const auto desktop = css::frame::Desktop::create(context);
        const Reference<css::frame::XModel> model(
            desktop->loadComponentFromURL(
                url, ToOUString(u"_blank"), 0,
                Properties(how.data(), static_cast<sal_Int32>(how.size()))),
            UNO_QUERY);
        if (!model.is()) fail("cannot be read: it is damaged, or no workbook");
        const Reference<css::lang::XServiceInfo> info(model, UNO_QUERY_THROW);
        if (!info->supportsService(ToOUString(u"com.sun.star.sheet.SpreadsheetDocument"))) {
            Reference<css::util::XCloseable>(model, UNO_QUERY_THROW)->close(true);
            fail("is not a workbook");
        }
        CalculateWhatHasNoResult(model);
        return model;
    } catch (const css::uno::Exception&) {
        fail("cannot be read: it is damaged, or no workbook");
        throw;
    }
}

}  // namespace korvane::office

#include "bindings/calc/calc_document.h"

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/container/XIndexAccess.hpp>
#include <com/sun/star/container/XNamed.hpp>
#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/frame/XStorable.hpp>
#include <com/sun/star/lang/XEventListener.hpp>
#include <com/sun/star/sheet/XCalculatable.hpp>
#include <com/sun/star/sheet/XCellRangeAddressable.hpp>
#include <com/sun/star/sheet/XSpreadsheetView.hpp>
#include <com/sun/star/util/Date.hpp>
#include <com/sun/star/util/NumberFormat.hpp>
#include <com/sun/star/util/XNumberFormatTypes.hpp>
#include <com/sun/star/util/XNumberFormatsSupplier.hpp>
#include <cppuhelper/implbase1.hxx>
#include <osl/file.hxx>
#include <utility>

#include "base/text.h"
#include "bindings/calc/dates.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/formula_text.h"
#include "bindings/calc/kept_cell.h"
#include "bindings/calc/tint_ledger.h"
#include "bindings/calc/uno_text.h"
#include "bindings/calc/view_data.h"
#include "bindings/calc/view_moves.h"
#include "host/constants.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY;
using css::uno::UNO_QUERY_THROW;

struct CalcDocument::Life {
    bool closed = false;
};

// The user's moves in the view, and what it showed when the active cell was set.
struct CalcDocument::Following {
    ViewMoves moves;
    std::u16string shown;
};

namespace {

// Days from 30 December 1899 to the given one, by counting days since a common
// day long ago (the civil calendar's formula).
double DaysFromHostDayZero(const css::util::Date& date) {
    const auto days = [](long year, long month, long day) {
        year -= month <= 2 ? 1 : 0;
        const long era = year / 400;
        const long inEra = year - era * 400;
        const long inYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
        return era * 146'097 + inEra * 365 + inEra / 4 - inEra / 100 + inYear;
    };
    return static_cast<double>(days(date.Year, date.Month, date.Day) - days(1899, 12, 30));
}

// The document's file name in UTF-16 and its folder; from its URL.
std::u16string SystemPath(const Reference<css::frame::XModel>& model) {
    rtl::OUString path;
    if (osl::FileBase::getSystemPathFromFileURL(model->getURL(), path) != osl::FileBase::E_None) {
        return {};
    }
    return ToText(path);
}

}  // namespace

CalcDocument::CalcDocument(const Reference<css::uno::XComponentContext>& context,
                           const Reference<css::frame::XModel>& model)
    : context_(context), model_(model), life_(std::make_shared<Life>()) {
    class Closing : public cppu::WeakImplHelper1<css::lang::XEventListener> {
    public:
        explicit Closing(std::shared_ptr<Life> life) : life_(std::move(life)) {}
        void SAL_CALL disposing(const css::lang::EventObject& /*source*/) override {
            life_->closed = true;
        }

    private:
        std::shared_ptr<Life> life_;
    };
    model_->addEventListener(new Closing(life_));

    sheets_ = Reference<css::sheet::XSpreadsheetDocument>(model_, UNO_QUERY_THROW)->getSheets();
    formats_ =
        Reference<css::util::XNumberFormatsSupplier>(model_, UNO_QUERY_THROW)->getNumberFormats();
    properties_.set(model_, UNO_QUERY_THROW);
    modifiable_.set(model_, UNO_QUERY_THROW);
    undoManager_ =
        Reference<css::document::XUndoManagerSupplier>(model_, UNO_QUERY_THROW)->getUndoManager();
    undoSteps_ = calc::UndoSteps(context_);
    css::util::Date dayZero;
    properties_->getPropertyValue(ToOUString(u"NullDate")) >>= dayZero;
    dateOffset_ = DaysFromHostDayZero(dayZero);
    formulas_ = std::make_unique<FormulaText>(model_, FileName());
    kept_ = std::make_unique<KeptCell>();
    tints_ = std::make_unique<TintLedger>(*this);
}

CalcDocument::~CalcDocument() = default;

void CalcDocument::Require() const {
    if (life_->closed) throw Error(kErrorObjectGone, u"The document has been closed");
}

void CalcDocument::LockViews(bool lock) const {
    if (lock) return model_->lockControllers();
    // What was written meanwhile is told now, and would mark the document.
    const bool wasEnabled = modifiable_->disableSetModified();
    model_->unlockControllers();
    if (wasEnabled) modifiable_->enableSetModified();
}

int CalcDocument::CalculationMode() const {
    const Reference<css::sheet::XCalculatable> mode(model_, UNO_QUERY_THROW);
    return mode->isAutomaticCalculationEnabled() ? host::xlCalculationAutomatic
                                                 : host::xlCalculationManual;
}

bool CalcDocument::IsClosed() const { return life_->closed; }

Reference<css::frame::XController> CalcDocument::controller() const {
    return model_->getCurrentController();
}

std::u16string CalcDocument::FileName() const {
    return std::u16string(AfterLast(SystemPath(model_), u'/'));
}

std::u16string CalcDocument::FolderPath() const {
    const std::u16string path = SystemPath(model_);
    const auto slash = path.rfind(u'/');
    return slash == std::u16string::npos ? std::u16string() : path.substr(0, slash);
}

bool CalcDocument::IsReadOnly() const {
    return Reference<css::frame::XStorable>(model(), UNO_QUERY_THROW)->isReadonly();
}

int CalcDocument::SheetCount() const {
    return Reference<css::container::XIndexAccess>(sheets_, UNO_QUERY_THROW)->getCount();
}

SheetRef CalcDocument::Sheet(int index) const {
    SheetRef sheet;
    Reference<css::container::XIndexAccess>(sheets_, UNO_QUERY_THROW)->getByIndex(index) >>= sheet;
    return sheet;
}

std::u16string CalcDocument::SheetName(int index) const {
    return ToText(Reference<css::container::XNamed>(Sheet(index), UNO_QUERY_THROW)->getName());
}

// The office itself compares the names: it knows the case of every letter.
std::optional<int> CalcDocument::FindSheet(std::u16string_view name) const {
    const rtl::OUString wanted = ToOUString(name);
    if (!sheets_->hasByName(wanted)) return std::nullopt;
    Reference<css::sheet::XCellRangeAddressable> sheet;
    sheets_->getByName(wanted) >>= sheet;
    return sheet.is() ? std::optional<int>(sheet->getRangeAddress().Sheet) : std::nullopt;
}

CellRangeRef CalcDocument::Cells(int sheet, const Area& area) const {
    return Sheet(sheet)->getCellRangeByPosition(area.left - 1, area.top - 1, area.right - 1,
                                                area.bottom - 1);
}

CalcDocument::NumberKind CalcDocument::KindOfFormat(sal_Int32 key) const {
    if (const auto known = kinds_.find(key); known != kinds_.end()) return known->second;
    sal_Int16 type = 0;
    css::lang::Locale locale;
    const auto format = formats_->getByKey(key);
    format->getPropertyValue(ToOUString(u"Type")) >>= type;
    format->getPropertyValue(ToOUString(u"Locale")) >>= locale;
    const Reference<css::util::XNumberFormatTypes> types(formats_, UNO_QUERY_THROW);
    NumberKind kind =
        types->getStandardIndex(locale) == key ? NumberKind::kGeneral : NumberKind::kNumber;
    if ((type & css::util::NumberFormat::DATE) != 0) kind = NumberKind::kDate;
    if ((type & css::util::NumberFormat::LOGICAL) != 0) kind = NumberKind::kBoolean;
    kinds_.emplace(key, kind);
    return kind;
}

void CalcDocument::NoteChangesIn(const std::shared_ptr<ChangeJournal>& journal) {
    tints_->SetJournal(journal);
    kept_->noted().SetJournal(journal);
}

void CalcDocument::FollowView() { following_ = std::make_unique<Following>(); }

void CalcDocument::SetActiveCell(const CellAddress& cell) {
    active_ = cell;
    selected_.reset();
    if (!following_) return;
    following_->shown = DescribeView(controller());
    following_->moves.Follow(controller());
}

// The view tells of our own selecting, too, and may do so late; and where it has
// the cursor in a range is not the range's first cell.
void CalcDocument::ForgetIfMoved() const {
    if (!following_ || !active_ || !following_->moves.Take(controller())) return;
    if (DescribeView(controller()) == following_->shown) return;
    active_.reset();
    selected_.reset();
}

CellAddress CalcDocument::ActiveCell() const {
    ForgetIfMoved();
    if (active_) return *active_;
    return ActiveCellOfView(controller()).value_or(CellAddress(0, 0, 0));
}

Area CalcDocument::Selection() const {
    const CellAddress cell = ActiveCell();
    if (selected_) return *selected_;
    // A cell of a hidden sheet can be the active one, and is not what the view has.
    const auto shown = following_ ? SelectionOfView(controller()) : std::nullopt;
    if (shown && shown->Sheet == cell.Sheet && shown->StartRow <= cell.Row &&
        cell.Row <= shown->EndRow && shown->StartColumn <= cell.Column &&
        cell.Column <= shown->EndColumn) {
        return {shown->StartRow + 1, shown->StartColumn + 1, shown->EndRow + 1,
                shown->EndColumn + 1};
    }
    return {cell.Row + 1, cell.Column + 1, cell.Row + 1, cell.Column + 1};
}

}  // namespace korvane::calc

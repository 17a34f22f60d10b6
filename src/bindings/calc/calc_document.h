// One open spreadsheet document, shared by all handles that lead into it.
#pragma once

#include <com/sun/star/beans/XPropertySet.hpp>
#include <com/sun/star/document/XUndoManager.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/sheet/XSpreadsheet.hpp>
#include <com/sun/star/sheet/XSpreadsheetDocument.hpp>
#include <com/sun/star/sheet/XSpreadsheets.hpp>
#include <com/sun/star/table/CellAddress.hpp>
#include <com/sun/star/table/XCellRange.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <com/sun/star/util/XModifiable2.hpp>
#include <com/sun/star/util/XNumberFormats.hpp>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "base/a1.h"
#include "bindings/calc/errors.h"

namespace korvane::calc {

class ChangeJournal;
class FormulaText;
class KeptCell;
class SilentDocument;
class TintLedger;

// A cell by numbers: 0-based, as the office counts.
using CellAddress = com::sun::star::table::CellAddress;
using CellRangeRef = com::sun::star::uno::Reference<com::sun::star::table::XCellRange>;
using SheetRef = com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheet>;

class CalcDocument {
public:
    // `model` must be a spreadsheet document.
    CalcDocument(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
        const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model);
    ~CalcDocument();
    CalcDocument(const CalcDocument&) = delete;
    CalcDocument& operator=(const CalcDocument&) = delete;

    // Throws kErrorObjectGone when the document has been closed. A closed
    // document's objects answer 0 and empty texts: so every access asks first.
    void Require() const;
    bool IsClosed() const;

    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context() const {
        return context_;
    }
    const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model() const {
        return model_;
    }
    // What every write asks of the model.
    const com::sun::star::uno::Reference<com::sun::star::beans::XPropertySet>& properties() const {
        return properties_;
    }
    const com::sun::star::uno::Reference<com::sun::star::util::XModifiable2>& modifiable() const {
        return modifiable_;
    }
    const com::sun::star::uno::Reference<com::sun::star::document::XUndoManager>& undoManager()
        const {
        return undoManager_;
    }
    // How many steps the undo list holds at most, those to be redone among them.
    sal_Int32 UndoSteps() const { return undoSteps_; }
    // Keeps the views from repainting, or lets them again; each time counts.
    void LockViews(bool lock) const;
    // The calculation mode that the document has, as the host counts them.
    int CalculationMode() const;
    // The frame's controller, null when the document has none.
    com::sun::star::uno::Reference<com::sun::star::frame::XController> controller() const;

    // The file's name and folder; both empty for a document without a file.
    std::u16string FileName() const;
    std::u16string FolderPath() const;

    // Its user cannot change it.
    bool IsReadOnly() const;
    int SheetCount() const;
    SheetRef Sheet(int index) const;
    std::u16string SheetName(int index) const;
    // Ignores case, as formulas do.
    std::optional<int> FindSheet(std::u16string_view name) const;
    CellRangeRef Cells(int sheet, const Area& area) const;

    // What the document's number format says of a number.
    enum class NumberKind { kGeneral, kNumber, kDate, kBoolean };
    NumberKind KindOfFormat(sal_Int32 key) const;
    // Days between the document's day 0 and 30 December 1899.
    double DateOffset() const { return dateOffset_; }

    FormulaText& formulas() const { return *formulas_; }
    // What its silences share while there are any (silence.h).
    std::weak_ptr<SilentDocument>& silent() const { return silent_; }
    // The cell whose formula was read last, as it was then.
    KeptCell& kept() const { return *kept_; }
    // The fills that cells have been given.
    TintLedger& tints() const { return *tints_; }

    // The active cell: what sheet-less references and relative names are read
    // from. Kept here, because a cell of a hidden sheet cannot be selected. Set
    // behind what the view is told.
    void SetActiveCell(const CellAddress& cell);
    CellAddress ActiveCell() const;
    // Selects cells of the active cell's sheet: the next active cell takes them
    // off. Without any it is what the user selected in the view, or the active cell
    // alone.
    void SetSelection(const Area& cells) { selected_ = cells; }
    Area Selection() const;

    // From now on changes are noted there for as long as they stand.
    void NoteChangesIn(const std::shared_ptr<ChangeJournal>& journal);

    // From now on a user moves about in the document's view, too: where he goes
    // takes the place of what was set.
    void FollowView();
    // Brings the document's window to the front where there are several. Empty:
    // the window is raised.
    std::function<void()> activate;

private:
    struct Life;  // outlives the document as long as the office refers to it
    struct Following;

    void ForgetIfMoved() const;

    com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext> context_;
    com::sun::star::uno::Reference<com::sun::star::frame::XModel> model_;
    com::sun::star::uno::Reference<com::sun::star::sheet::XSpreadsheets> sheets_;
    com::sun::star::uno::Reference<com::sun::star::util::XNumberFormats> formats_;
    com::sun::star::uno::Reference<com::sun::star::beans::XPropertySet> properties_;
    com::sun::star::uno::Reference<com::sun::star::util::XModifiable2> modifiable_;
    com::sun::star::uno::Reference<com::sun::star::document::XUndoManager> undoManager_;
    sal_Int32 undoSteps_ = 0;
    std::shared_ptr<Life> life_;
    double dateOffset_ = 0;
    mutable std::optional<CellAddress> active_;
    mutable std::optional<Area> selected_;
    std::unique_ptr<Following> following_;  // null without a user
    std::unique_ptr<FormulaText> formulas_;
    std::unique_ptr<KeptCell> kept_;
    std::unique_ptr<TintLedger> tints_;
    mutable std::weak_ptr<SilentDocument> silent_;
    mutable std::map<sal_Int32, NumberKind> kinds_;
};

using DocumentPtr = std::shared_ptr<CalcDocument>;

// Every member of a handle runs in here: a closed document fails, and the
// office's exceptions become errors.
template <class Call>
decltype(auto) Ask(const DocumentPtr& document, Call&& call) {
    document->Require();
    return Translated(std::forward<Call>(call));
}

}  // namespace korvane::calc

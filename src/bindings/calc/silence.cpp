#include "bindings/calc/silence.h"

#include <com/sun/star/uno/Exception.hpp>
#include <com/sun/star/view/XSelectionSupplier.hpp>

#include "base/attempt.h"
#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;

namespace {

const rtl::OUString& IsUndoEnabled() {
    static const rtl::OUString name = ToOUString(u"IsUndoEnabled");
    return name;
}

// Without it a read-only document ignores most writes without a word, but not all.
const rtl::OUString& IsChangeReadOnlyEnabled() {
    static const rtl::OUString name = ToOUString(u"IsChangeReadOnlyEnabled");
    return name;
}

// A row whose height is not its user's own is measured anew by every change of a
// cell's look; what its file said of it would be lost.
const rtl::OUString& IsAdjustHeightEnabled() {
    static const rtl::OUString name = ToOUString(u"IsAdjustHeightEnabled");
    return name;
}

bool IsOn(const CalcDocument& document, const rtl::OUString& property) {
    bool on = false;
    document.properties()->getPropertyValue(property) >>= on;
    return on;
}

void Switch(const CalcDocument& document, const rtl::OUString& property, bool on) {
    css::uno::Any value;
    value <<= on;
    document.properties()->setPropertyValue(property, value);
}

// Puts back at its end what a view shows and has selected.
class ViewAsItIs {
public:
    explicit ViewAsItIs(css::uno::Reference<css::frame::XController> view)
        : view_(std::move(view)), selection_(view_, css::uno::UNO_QUERY) {
        if (!view_.is()) return;
        data_ = view_->getViewData();
        if (selection_.is()) selected_ = selection_->getSelection();
    }
    ~ViewAsItIs() {
        Suppressed([this] {
            if (!view_.is()) return;
            view_->restoreViewData(data_);
            if (selection_.is()) selection_->select(selected_);
        });
    }
    ViewAsItIs(const ViewAsItIs&) = delete;
    ViewAsItIs& operator=(const ViewAsItIs&) = delete;

private:
    css::uno::Reference<css::frame::XController> view_;
    css::uno::Reference<css::view::XSelectionSupplier> selection_;
    css::uno::Any data_;
    css::uno::Any selected_;
};

}  // namespace

// What all silences of a document share.
class SilentDocument {
public:
    explicit SilentDocument(const CalcDocument& document);
    ~SilentDocument();
    SilentDocument(const SilentDocument&) = delete;
    SilentDocument& operator=(const SilentDocument&) = delete;

    void BeforeWrite();
    void Record();
    void TakeBack();

private:
    enum class Undo {
        kRecording,    // as the user has it
        kSwitchedOff,  // within an undo context that will be found empty
        kLocked,       // until the next write
    };
    bool CanSwitchOff() const;
    void SwitchOff();

    const CalcDocument& document_;
    bool wasEnabled_ = false;
    bool adjusts_ = false;  // the document measures rows anew
    bool opened_ = false;   // a document that is read-only takes writes by us
    Undo undo_ = Undo::kRecording;
};

SilentDocument::SilentDocument(const CalcDocument& document) : document_(document) {
    document_.model()->lockControllers();
    wasEnabled_ = document_.modifiable()->disableSetModified();
    adjusts_ = IsOn(document_, IsAdjustHeightEnabled());
    if (adjusts_) Switch(document_, IsAdjustHeightEnabled(), false);
    opened_ = document_.IsReadOnly() && !IsOn(document_, IsChangeReadOnlyEnabled());
    if (opened_) Switch(document_, IsChangeReadOnlyEnabled(), true);
}

SilentDocument::~SilentDocument() {
    try {
        Record();
        if (opened_) Switch(document_, IsChangeReadOnlyEnabled(), false);
        if (adjusts_) Switch(document_, IsAdjustHeightEnabled(), true);
        document_.model()->unlockControllers();
        // Last: unlocking tells the document that something has happened.
        if (wasEnabled_) document_.modifiable()->enableSetModified();
    } catch (const css::uno::Exception&) {
        // The document is gone, and with it what was to be put back.
    }
}

// A lock of the undo manager does not hold. Whenever a part of the sheet is to be
// painted, the view switches undo off and on again, and with that takes the lock
// away: behind every write, and before the write is recorded when a conditional
// format reads the written cell. Where the document's own switch is off, the view
// leaves it off. Using that switch empties the undo list that is current: so it is
// used within a new context, whose list is empty and vanishes as it came.
void SilentDocument::BeforeWrite() {
    if (undo_ == Undo::kSwitchedOff) return;
    if (undo_ == Undo::kRecording && CanSwitchOff()) return SwitchOff();
    Record();
    document_.undoManager()->lock();
    undo_ = Undo::kLocked;
}

// A full list would drop its oldest step to make room for the context. A list that
// someone else has locked takes none.
bool SilentDocument::CanSwitchOff() const {
    const auto& undo = document_.undoManager();
    return !undo->isLocked() &&
           undo->getAllUndoActionTitles().getLength() + undo->getAllRedoActionTitles().getLength() <
               document_.UndoSteps();
}

void SilentDocument::SwitchOff() {
    document_.undoManager()->enterUndoContext(rtl::OUString());
    undo_ = Undo::kSwitchedOff;
    Switch(document_, IsUndoEnabled(), false);
}

void SilentDocument::Record() {
    const Undo was = undo_;
    undo_ = Undo::kRecording;
    if (was == Undo::kSwitchedOff) {
        Switch(document_, IsUndoEnabled(), true);
        document_.undoManager()->leaveUndoContext();
    } else if (was == Undo::kLocked) {
        document_.undoManager()->unlock();
    }
}

// Undoing shows its user the place where it happens.
void SilentDocument::TakeBack() {
    const ViewAsItIs view(document_.controller());
    document_.undoManager()->undo();
    document_.undoManager()->clearRedo();
}

Silence::Silence(const CalcDocument& document) : silent_(document.silent().lock()) {
    if (silent_) return;
    silent_ = std::make_shared<SilentDocument>(document);
    document.silent() = silent_;
}

void Silence::BeforeWrite() { silent_->BeforeWrite(); }
void Silence::BeforeWriteToTakeBack() { silent_->Record(); }
void Silence::TakeBack() { silent_->TakeBack(); }

std::shared_ptr<void> SilenceOf(const DocumentPtr& document) noexcept {
    struct Held {
        explicit Held(const DocumentPtr& silenced) : document(silenced), silence(*silenced) {}
        DocumentPtr document;
        Silence silence;  // ends first
    };
    std::shared_ptr<Held> held;
    Suppressed([&] {
        if (!document->IsClosed()) held = std::make_shared<Held>(document);
    });
    return held;
}

}  // namespace korvane::calc

#include "bindings/calc/silence.h"

#include <com/sun/star/uno/Exception.hpp>

#include "bindings/calc/uno_text.h"

namespace korvane::calc {

namespace css = com::sun::star;

namespace {

const rtl::OUString& IsUndoEnabled() {
    static const rtl::OUString name = ToOUString(u"IsUndoEnabled");
    return name;
}

void EnableUndo(const CalcDocument& document, bool enable) {
    css::uno::Any value;
    value <<= enable;
    document.properties()->setPropertyValue(IsUndoEnabled(), value);
}

}  // namespace

Silence::Silence(const CalcDocument& document) : document_(document) {
    document_.model()->lockControllers();
    wasEnabled_ = document_.modifiable()->disableSetModified();
}

Silence::~Silence() {
    try {
        Record();
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
void Silence::BeforeWrite() {
    if (undo_ == Undo::kSwitchedOff) return;
    if (undo_ == Undo::kRecording && CanSwitchOff()) return SwitchOff();
    Record();
    document_.undoManager()->lock();
    undo_ = Undo::kLocked;
}

// A full list would drop its oldest step to make room for the context. A list that
// someone else has locked takes none.
bool Silence::CanSwitchOff() const {
    const auto& undo = document_.undoManager();
    return !undo->isLocked() &&
           undo->getAllUndoActionTitles().getLength() + undo->getAllRedoActionTitles().getLength() <
               document_.UndoSteps();
}

void Silence::SwitchOff() {
    document_.undoManager()->enterUndoContext(rtl::OUString());
    undo_ = Undo::kSwitchedOff;
    EnableUndo(document_, false);
}

void Silence::Record() {
    const Undo was = undo_;
    undo_ = Undo::kRecording;
    if (was == Undo::kSwitchedOff) {
        EnableUndo(document_, true);
        document_.undoManager()->leaveUndoContext();
    } else if (was == Undo::kLocked) {
        document_.undoManager()->unlock();
    }
}

void Silence::BeforeWriteToTakeBack() { Record(); }

void Silence::TakeBack() {
    document_.undoManager()->undo();
    document_.undoManager()->clearRedo();
}

}  // namespace korvane::calc

#include "bindings/calc/silence.h"

#include <com/sun/star/document/XUndoManagerSupplier.hpp>
#include <com/sun/star/uno/Exception.hpp>

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::UNO_QUERY_THROW;

Silence::Silence(const css::uno::Reference<css::frame::XModel>& model)
    : model_(model),
      modifiable_(model, UNO_QUERY_THROW),
      undo_(css::uno::Reference<css::document::XUndoManagerSupplier>(model, UNO_QUERY_THROW)
                ->getUndoManager()) {
    model_->lockControllers();
    wasEnabled_ = modifiable_->disableSetModified();
}

Silence::~Silence() {
    try {
        if (locked_) undo_->unlock();
        model_->unlockControllers();
        // Last: unlocking tells the document that something has happened.
        if (wasEnabled_) modifiable_->enableSetModified();
    } catch (const css::uno::Exception&) {
        // The document is gone, and with it what was to be put back.
    }
}

void Silence::BeforeWriteToTakeBack() {
    if (locked_) undo_->unlock();
    locked_ = false;
}

void Silence::TakeBack() {
    undo_->undo();
    undo_->clearRedo();
}

// Calc takes the undo lock off by itself after one write.
void Silence::BeforeWrite() {
    if (locked_) undo_->unlock();
    locked_ = false;
    undo_->lock();
    locked_ = true;
}

}  // namespace korvane::calc

// Writing into a user's document without leaving a trace.
#pragma once

#include <memory>

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// While it lives, writes neither repaint the views nor mark the document as
// modified nor change the heights of rows nor reach its undo list, and a document
// that its user cannot change takes them, too. Ask BeforeWrite before each single
// write. One within another changes nothing: the document is as before when the last
// one goes.
class Silence {
public:
    // The document must outlive it.
    explicit Silence(const CalcDocument& document);

    void BeforeWrite();
    // For one write that cannot be undone by another: it goes to the undo list
    // after all, and TakeBack undoes it. What could be redone before is lost.
    void BeforeWriteToTakeBack();
    void TakeBack();

private:
    std::shared_ptr<SilentDocument> silent_;
};

// One for whoever is to know nothing of it; null when the document has been closed.
// Keeps the document. Never throws.
std::shared_ptr<void> SilenceOf(const DocumentPtr& document) noexcept;

}  // namespace korvane::calc

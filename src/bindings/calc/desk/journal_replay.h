// Putting back what the death of an office left in a document.
#pragma once

#include "bindings/calc/calc_document.h"
#include "bindings/calc/desk/dead_journals.h"

namespace korvane::calc {

// Where a cell of the document that has just been opened still holds exactly what
// was noted as written, it gets back what was there before; all else is left alone.
// Nothing reaches the undo list. A document in which something was put back counts
// as modified: its file is not what the user had. The notes are done with, but
// those of documents without a file, which may still be opened, are kept until
// something was put back. Whether something was; never throws.
bool PutBackWhatDied(const DocumentPtr& document, const DeadJournals& journals) noexcept;

}  // namespace korvane::calc

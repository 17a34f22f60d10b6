// Defined names whose meaning depends on where they are used.
#pragma once

#include <map>
#include <optional>
#include <set>
#include <string>

#include "bindings/calc/calc_document.h"
#include "bindings/calc/document_changes.h"

namespace korvane::calc {

struct ExpandedNames {
    std::u16string text;
    // A name, or a name within it, reaches outside the document: the text must
    // not be evaluated.
    bool outside = false;
};

// Replaces names that mean something else in another cell by what they mean at
// the active one: a scratch cell would see them from its own place.
class NameExpansion {
public:
    // Both must outlive it.
    NameExpansion(const CalcDocument& document, const DocumentChanges& changes);

    ExpandedNames Expand(const std::u16string& text, const CellAddress& active);

private:
    // A name of the active cell's sheet or of the document.
    struct Known {
        std::optional<std::u16string> replacement;  // nothing: it stays as it is
        bool outside = false;
    };
    void ForgetOthers(const CellAddress& active);
    Known Look(const std::u16string& name);

    const CalcDocument& document_;
    const DocumentChanges& changes_;
    std::set<sal_Int32> ofTheCell_;  // functions whose result depends on where they stand
    // Names by their text in capitals, as they are at a cell, the document being
    // as it was. A part of a formula has the names of the whole, and names that
    // use another twice would double the work with each step.
    std::map<std::u16string, Known> known_;
    CellAddress knownAt_;
    unsigned long knownWhen_ = 0;
    int depth_ = 0;
};

}  // namespace korvane::calc

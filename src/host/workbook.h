// A workbook: the add-in's own, or one that holds explored cells.
#pragma once

#include <string>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

class Workbook : public Object {
public:
    std::u16string TypeName() const override { return u"Workbook"; }

    // The file name without its folder ("Budget.xlsx"). Compared with the
    // explored cell's workbook to mark references into another one.
    virtual std::u16string Name() = 0;
    // The folder that holds the workbook; of the add-in's own it is the add-in
    // folder. Without a separator at its end, mostly. Empty for a workbook that
    // was never saved.
    virtual std::u16string Path() = 0;
    // The names that are defined for the whole workbook.
    virtual NamesPtr Names() = 0;
    // Brings the workbook's window to the front, before cells are selected.
    virtual void Activate() = 0;
};

}  // namespace korvane::host

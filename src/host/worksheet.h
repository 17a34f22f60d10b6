// A sheet of cells.
#pragma once

#include <string>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

class Worksheet : public Object {
public:
    std::u16string TypeName() const override { return u"Worksheet"; }

    // The sheet's name, without quotes, for location texts.
    virtual std::u16string Name() = 0;
    // The workbook that holds the sheet.
    virtual WorkbookPtr Parent() = 0;
    // The names that are defined for this sheet alone.
    virtual NamesPtr Names() = 0;
    // Whether the sheet's cells are protected. The block of an array formula is
    // taken, and a formula is written for a moment, only where they are not.
    virtual bool ProtectContents() = 0;
    // Brings the sheet to the front, before its cells are selected.
    virtual void Activate() = 0;
};

}  // namespace korvane::host

// Defined names and the collections that hold them.
#pragma once

#include <string>
#include <string_view>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

class Name : public Object {
public:
    std::u16string TypeName() const override { return u"Name"; }

    // The name's text; a sheet's own name carries the sheet's prefix with "!".
    virtual std::u16string Name_() = 0;
    // The formula text, with "=", that the name stands for.
    virtual std::u16string RefersTo() = 0;
};

// The names of one sheet or one workbook.
class Names : public Object {
public:
    std::u16string TypeName() const override { return u"Names"; }

    // The name with this text, ignoring case; a sheet's own name may be asked
    // for with or without the sheet's prefix. Null when there is none. (The
    // object model raises then. Every token of every formula is looked up here
    // and most are no names, so this boundary answers the expected case without
    // an exception; any other failure raises as everywhere.)
    virtual NamePtr Item(std::u16string_view text) = 0;
};

}  // namespace korvane::host

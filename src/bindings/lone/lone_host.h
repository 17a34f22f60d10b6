// The smallest host: one cell, Sheet1!A1, that holds any formula text. It knows
// no other cells and no names; literals evaluate to themselves and every other
// text to the error 2029. Formulas are taken apart on it without any document,
// by the ten thousand, so nothing here allocates: all handles lead to the parts
// of the host itself.
#pragma once

#include <memory>
#include <string>

#include "host/application.h"

namespace korvane::lone {

class LoneHost {
public:
    LoneHost();
    ~LoneHost();
    LoneHost(const LoneHost&) = delete;
    LoneHost& operator=(const LoneHost&) = delete;

    // Puts a text into the cell.
    void SetFormula(std::u16string formula);

    host::Application& application();
    // The cell. All handles of this host lead into it and must not outlive it.
    host::RangePtr cell();

    // Calls that the host has answered.
    std::int64_t calls() const;

private:
    class Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace korvane::lone

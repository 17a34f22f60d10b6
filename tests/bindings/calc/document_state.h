// A spreadsheet document as the office itself has it, for comparing.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <string>

namespace korvane::calc::testing {

// Everything that exploring must leave as it is: every cell's formula, value, text,
// number format and fill, the heights of rows, the modified flag, the undo and redo lists, and
// whether anything is locked.
std::string StateOf(const com::sun::star::uno::Reference<com::sun::star::frame::XModel>& model);

// The first lines in which two states differ; empty when they do not.
std::string Difference(const std::string& before, const std::string& after);

}  // namespace korvane::calc::testing

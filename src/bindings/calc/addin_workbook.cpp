#include "bindings/calc/addin_workbook.h"

#include "base/error.h"

namespace korvane::calc {

host::NamesPtr AddinWorkbook::Names() {
    throw Error(kErrorApplication, u"The add-in's own workbook has no names");
}

void AddinWorkbook::Activate() {
    throw Error(kErrorApplication, u"The add-in's own workbook has no window");
}

}  // namespace korvane::calc

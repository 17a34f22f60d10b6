#include "navigation/go_to.h"

#include "base/attempt.h"
#include "host/range.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane {

bool bGoTo(host::Range& rng) {
    const bool bWorkbook = Succeeds([&] { rng.Worksheet()->Parent()->Activate(); });
    const bool bWorksheet = Succeeds([&] { rng.Worksheet()->Activate(); });
    const bool bSelected = Succeeds([&] { rng.Select(); });
    return bWorkbook && bWorksheet && bSelected;
}

}  // namespace korvane

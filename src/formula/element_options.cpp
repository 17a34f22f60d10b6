#include "formula/element_options.h"

#include "host/constants.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"

namespace korvane {
namespace {
constexpr std::int32_t kMostElements = 200'000;
}

void CElementOptions::ClearCalc() { bSaved_ = false; }

void CElementOptions::ForgetRoot() {
    rootWorkbookName_.reset();
    sheetNames_.reset();
    workbookNames_.reset();
    expandingNames.clear();
    elements_ = 0;
}

void CElementOptions::SaveCalc() {
    if (bSaved_) return;
    lSavedCalculation_ = application_.Calculation();
    bSavedScreenUpdating_ = application_.ScreenUpdating();
    // Counted as saved before the host is changed: whatever fails from here on,
    // the state can be put back.
    bSaved_ = true;
    application_.SetCalculation(host::xlCalculationManual);
    application_.SetScreenUpdating(false);
}

void CElementOptions::RestoreCalc() {
    if (!bSaved_) return;
    application_.SetCalculation(lSavedCalculation_);
    application_.SetScreenUpdating(bSavedScreenUpdating_);
    bSaved_ = false;
}

const std::u16string& CElementOptions::RootWorkbookName() {
    if (!rootWorkbookName_) rootWorkbookName_ = rngRootCell->Worksheet()->Parent()->Name();
    return *rootWorkbookName_;
}

host::Names& CElementOptions::SheetNames() {
    if (!sheetNames_) sheetNames_ = rngRootCell->Worksheet()->Names();
    return *sheetNames_;
}

host::Names& CElementOptions::WorkbookNames() {
    if (!workbookNames_) workbookNames_ = rngRootCell->Worksheet()->Parent()->Names();
    return *workbookNames_;
}

void CElementOptions::CountElement() {
    if (++elements_ > kMostElements) {
        throw Error(kErrorOutOfStack, u"The formula has too many parts");
    }
}

}  // namespace korvane

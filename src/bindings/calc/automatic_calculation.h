// Calculation for the time of a write.
#pragma once

#include <com/sun/star/sheet/XCalculatable.hpp>

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// In manual mode a formula that is written stays 0. For the time of a write the
// document calculates by itself; what was up to date before stays as it is.
class AutomaticCalculation {
public:
    explicit AutomaticCalculation(const CalcDocument& document)
        : mode_(document.model(), com::sun::star::uno::UNO_QUERY_THROW),
          wasManual_(!mode_->isAutomaticCalculationEnabled()) {
        if (wasManual_) mode_->enableAutomaticCalculation(true);
    }
    ~AutomaticCalculation() {
        try {
            if (wasManual_) mode_->enableAutomaticCalculation(false);
        } catch (const com::sun::star::uno::Exception&) {
            // The document is gone.
        }
    }
    AutomaticCalculation(const AutomaticCalculation&) = delete;
    AutomaticCalculation& operator=(const AutomaticCalculation&) = delete;

private:
    com::sun::star::uno::Reference<com::sun::star::sheet::XCalculatable> mode_;
    bool wasManual_;
};

}  // namespace korvane::calc

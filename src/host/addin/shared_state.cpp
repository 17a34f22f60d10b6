#include "host/addin/shared_state.h"

namespace korvane {

void SharedState::ReleaseWhenIdle() {
    releaseDue_ = true;
    if (!errors.IsBusy()) Release();
}

void SharedState::Release() {
    releaseDue_ = false;
    applicationEvents.reset();
    history.reset();
    workbook.reset();
    options.reset();
    controlEvents.reset();
    application.reset();
}

}  // namespace korvane

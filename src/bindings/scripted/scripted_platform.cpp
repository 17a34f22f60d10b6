#include "bindings/scripted/scripted_platform.h"

namespace korvane::scripted {

ScriptedPlatform::ScriptedPlatform(const std::shared_ptr<Accesses>& accesses)
    : clock(accesses),
      files(accesses),
      messageBoxes(accesses),
      modal(accesses),
      resources(accesses),
      screen(accesses),
      settings(accesses),
      shell(accesses),
      urls(accesses),
      accesses_(accesses) {
    messageBoxes.windows = &windows;
    windows.onCall = [this](const char* member) { accesses_->Enter(member); };
}

}  // namespace korvane::scripted

#include "bindings/scripted/scripted_modal.h"

#include <utility>

#include "base/error.h"
#include "bindings/scripted/depth.h"

namespace korvane::scripted {

void ScriptedModalLoop::Run(const std::function<bool()>& done) {
    accesses_->Enter("Modal.Run");
    const Deeper deeper(running);
    while (!done()) {
        if (steps.empty()) {
            if (endsWithoutSteps) return;
            throw Error(kErrorApplication, u"The user does nothing more, and is waited for");
        }
        const auto step = std::move(steps.front());
        steps.pop_front();
        step();
    }
}

}  // namespace korvane::scripted

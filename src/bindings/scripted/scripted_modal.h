// Waiting for the user: a script says what he does meanwhile.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "bindings/scripted/accesses.h"
#include "platform/modal.h"

namespace korvane::scripted {

class ScriptedModalLoop : public platform::ModalLoop {
public:
    explicit ScriptedModalLoop(std::shared_ptr<Accesses> accesses)
        : accesses_(std::move(accesses)) {}

    // Takes the steps one after another until `done`, which is asked before each
    // and behind the last. Raises kErrorApplication when none is left before.
    void Run(const std::function<bool()>& done) override;

    // What the user does next. A step may wait within itself (the inner Run goes
    // on with the steps that follow), and it may add steps.
    std::deque<std::function<void()>> steps;
    // Without steps Run returns, as where the last view that could bring an
    // event is gone.
    bool endsWithoutSteps = false;
    int running = 0;  // calls of Run that wait now

private:
    std::shared_ptr<Accesses> accesses_;
};

}  // namespace korvane::scripted

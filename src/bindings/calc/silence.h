// Writing into a user's document without leaving a trace.
#pragma once

#include "bindings/calc/calc_document.h"

namespace korvane::calc {

// While it lives, writes neither repaint the views nor mark the document as
// modified nor reach its undo list. Ask BeforeWrite before each single write.
class Silence {
public:
    // The document must outlive it.
    explicit Silence(const CalcDocument& document);
    ~Silence();
    Silence(const Silence&) = delete;
    Silence& operator=(const Silence&) = delete;

    void BeforeWrite();
    // For one write that cannot be undone by another: it goes to the undo list
    // after all, and TakeBack undoes it. What could be redone before is lost.
    void BeforeWriteToTakeBack();
    void TakeBack();

private:
    enum class Undo {
        kRecording,    // as the user has it
        kSwitchedOff,  // within an undo context that will be found empty
        kLocked,       // until the next write
    };
    bool CanSwitchOff() const;
    void SwitchOff();
    void Record();

    const CalcDocument& document_;
    bool wasEnabled_ = false;
    Undo undo_ = Undo::kRecording;
};

}  // namespace korvane::calc

// Takes formula texts apart without any document: see bindings/lone.
#pragma once

#include <cstdint>
#include <string>

#include "bindings/lone/lone_host.h"
#include "formula/element.h"

namespace korvane::command {

// The elements of a tree, the root included.
std::int64_t CountElements(const CElement& element);

class LoneCell {
public:
    LoneCell() : options_(host_.application(), lastError_) { options_.rngRootCell = host_.cell(); }

    // Parses `formula` into `root`, whose earlier tree is dropped and which must
    // not outlive this cell. On failure returns false and describes it in
    // `error`.
    bool Parse(std::u16string formula, bool bEveryFunction, CElement& root, std::u16string& error);

    // Calls that the host has answered so far.
    std::int64_t hostCalls() const { return host_.calls(); }

private:
    class LastError : public ErrorReporter {
    public:
        void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                    bool isEntryPoint) override;
        std::u16string description;
    };

    lone::LoneHost host_;
    LastError lastError_;
    CElementOptions options_;
};

}  // namespace korvane::command

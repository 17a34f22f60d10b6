// Takes formula texts apart without any document: one cell that holds the text,
// on a host that knows no other cells and no names. Literals evaluate to
// themselves and everything else to the error 2029.
#pragma once

#include <memory>
#include <string>

#include "bindings/scripted/scripted_host.h"
#include "formula/element.h"

namespace korvane::command {

class LoneCell {
public:
    LoneCell();

    // Parses `formula` into `root`, whose earlier tree is dropped and which must
    // not outlive this cell. On failure returns false and describes it in
    // `error`.
    bool Parse(std::u16string formula, bool bEveryFunction, CElement& root, std::u16string& error);

    scripted::ScriptedHost& host() { return host_; }

private:
    class LastError : public ErrorReporter {
    public:
        void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                    bool isEntryPoint) override;
        std::u16string description;
    };

    scripted::ScriptedHost host_;
    LastError lastError_;
    host::ApplicationPtr application_;
    CElementOptions options_;
};

}  // namespace korvane::command

// Exploring scripted documents in tests.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "bindings/scripted/scripted_host.h"
#include "formula/element.h"

namespace korvane::test {

// A scripted host for a JSON document; the text is checked as it is read.
std::unique_ptr<scripted::ScriptedHost> HostOf(const std::string& json);

// A host with one workbook "B.xls" and the sheets "S" and "My Sheet", S!A1
// holding `formula`. `members` are further members of S's "cells" as JSON, such
// as R"("B1":2)"; `rest` is further members of the document.
std::unique_ptr<scripted::ScriptedHost> HostWith(const std::string& formula,
                                                 const std::string& cells = "",
                                                 const std::string& rest = R"("literals":true)");

// One exploration of the active cell; keeps everything that it needs alive. When
// it ends it checks that no handle is left.
class Exploration {
public:
    Exploration(scripted::ScriptedHost& host, bool bEveryFunction, bool bPreciseCalc = false);
    ~Exploration();
    Exploration(const Exploration&) = delete;
    Exploration& operator=(const Exploration&) = delete;

    bool ok = false;
    const CElement& root() const { return *root_; }
    CElement& root() { return *root_; }
    CElementOptions& options() { return *options_; }
    // "module.procedure: description" of every failure that was reported.
    const std::vector<std::string>& log() const { return reporter_.lines; }
    // The tree as TreeText writes it.
    std::string text() const;

private:
    class Lines : public ErrorReporter {
    public:
        void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                    bool isEntryPoint) override;
        std::vector<std::string> lines;
    };

    scripted::ScriptedHost& host_;
    int handlesBefore_;
    Lines reporter_;
    host::ApplicationPtr application_;
    std::unique_ptr<CElementOptions> options_;
    std::unique_ptr<CElement> root_;
};

// Fails the running test unless the tree holds together: parent links agree,
// positions compose, and an element that keeps a position spans characters of
// its parent's text. Every Exploration checks its tree.
void CheckTree(const CElement& root);

}  // namespace korvane::test

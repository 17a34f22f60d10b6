#include "apps/report/exploration.h"

#include "formula/element.h"

namespace korvane {
namespace {

// Keeps what is reported as the lines of a log.
class LogLines : public ErrorReporter {
public:
    explicit LogLines(std::vector<std::u16string>& lines) : lines_(lines) {}
    void Report(const char16_t* module, const char16_t* procedure, const Error& error,
                bool /*isEntryPoint*/) override {
        lines_.push_back(std::u16string(module) + u"." + procedure + u": " + error.description());
    }

private:
    std::vector<std::u16string>& lines_;
};

}  // namespace

PartReport PartOf(const CElement& element) {
    PartReport part;
    part.name = element.sName();
    part.function = element.sFunction();
    part.formula = element.sFormula();
    part.kind = element.enGetType();
    part.tag = element.lTag();
    part.position = element.lPos();
    part.rootPosition = element.lRootPosition();
    part.length = element.lLength();
    part.value = element.sValue();
    part.location = element.sLocation();
    part.calcValue = element.sCalcValue();
    if (element.rngRange()) part.range = element.rngRange()->Address(host::kExternal);
    part.children.reserve(element.colSubs().size());
    for (const auto& sub : element.colSubs()) part.children.push_back(PartOf(*sub));
    return part;
}

ExplorationReport Explore(host::Application& application, const host::RangePtr& cell,
                          bool bEveryFunction, bool bPreciseCalc) {
    ExplorationReport report;
    report.bEveryFunction = bEveryFunction;
    report.bPreciseCalc = bPreciseCalc;
    LogLines log(report.log);
    CElementOptions options(application, log);
    options.bEveryFunction = bEveryFunction;
    options.bPreciseCalc = bPreciseCalc;
    options.rngRootCell = cell;
    CElement root;
    try {
        report.cell = cell->Address(host::kExternal);
        report.ok = root.bInitRoot(options);
        report.formula = root.sFormula();
        if (report.ok) report.tree = PartOf(root);
    } catch (const Error& error) {
        report.ok = false;
        log.Report(u"Korvane", u"Explore", error, true);
    }
    if (!report.ok) {
        try {
            options.RestoreCalc();  // an exploration that fails leaves this to its caller
        } catch (const Error& error) {
            log.Report(u"CElementOptions", u"RestoreCalc", error, true);
        }
    }
    report.bMaybeImprecise = options.bMaybeImprecise;
    report.bContainsIndirect = options.bContainsIndirect;
    return report;
}

}  // namespace korvane

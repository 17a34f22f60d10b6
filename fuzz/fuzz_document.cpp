// Any text as a scripted document: it is refused with a reason, or explored in
// all modes without harm; the explored cell keeps its formula and no handle is
// left.
#include <cstdint>
#include <cstdlib>
#include <nlohmann/json.hpp>
#include <string>

#include "apps/report/exploration.h"
#include "apps/report/exploration_json.h"
#include "bindings/scripted/load_document.h"
#include "bindings/scripted/scripted_host.h"

namespace {

void Require(bool holds) {
    if (!holds) std::abort();
}

void ExploreIn(const nlohmann::json& json, bool everyFunction, bool precise) {
    using namespace korvane;
    scripted::ScriptedHost host(scripted::LoadDocument(json));
    const int calculation = host.model().calculation;
    const auto cellText = [&] {
        const auto application = host.Application();
        const Value formula = application->ActiveCell()->Formula();
        return formula.Text() ? *formula.Text() : std::u16string();
    };
    const std::u16string before = cellText();
    {
        const auto application = host.Application();
        const auto report =
            Explore(*application, application->ActiveCell(), everyFunction, precise);
        Require(report.ok == report.tree.has_value());
        Require(report.ok || !report.log.empty());
        ToJson(report);
    }
    Require(cellText() == before);
    Require(host.model().calculation == calculation);
    Require(host.LiveHandles() == 0);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using korvane::scripted::DocumentError;
    try {
        const std::string text(reinterpret_cast<const char*>(data), size);
        for (const auto& json : korvane::scripted::SplitDocuments(text)) {
            for (const bool everyFunction : {false, true}) {
                for (const bool precise : {false, true}) ExploreIn(json, everyFunction, precise);
            }
        }
    } catch (const DocumentError&) {
        // Refused with a reason.
    }
    return 0;
}

#include <array>
#include <cmath>
#include <cstdio>

#include "base/error.h"
#include "base/text.h"
#include "bindings/scripted/civil_date.h"
#include "bindings/scripted/objects.h"
#include "bindings/scripted/scripted_command_bars.h"

namespace korvane::scripted {
namespace {

class SinkSubscription : public host::Subscription {
public:
    SinkSubscription(ScriptedHost& host, host::ApplicationEvents& sink)
        : host_(host), counted_(host), place_(host.applicationSinks.insert(&sink)) {}
    SinkSubscription(const SinkSubscription&) = delete;
    SinkSubscription& operator=(const SinkSubscription&) = delete;
    ~SinkSubscription() override { host_.applicationSinks.erase(place_); }

private:
    ScriptedHost& host_;
    ScriptedHost::Counted counted_;
    std::multiset<host::ApplicationEvents*>::iterator place_;
};

}  // namespace

std::u16string ScriptedApplication::Version() {
    host_.Enter("Application.Version");
    return host_.version;
}

std::u16string ScriptedApplication::Caption() {
    host_.Enter("Application.Caption");
    return host_.caption;
}

std::int64_t ScriptedApplication::Hwnd() {
    host_.Enter("Application.Hwnd");
    return host_.hwnd;
}

void ScriptedApplication::SetStatusBar(const korvane::Value& text) {
    host_.Enter("Application.SetStatusBar");
    host_.statusBar = text;
}

void ScriptedApplication::SetCursor(int cursor) {
    host_.Enter("Application.SetCursor");
    host_.cursor = cursor;
}

void ScriptedApplication::SetEnableEvents(bool enable) {
    host_.Enter("Application.SetEnableEvents");
    host_.enableEvents = enable;
}

bool ScriptedApplication::ScreenUpdating() {
    host_.Enter("Application.ScreenUpdating");
    return host_.model().screenUpdating;
}

void ScriptedApplication::SetScreenUpdating(bool update) {
    host_.Enter("Application.SetScreenUpdating");
    host_.model().screenUpdating = update;
}

int ScriptedApplication::Calculation() {
    host_.Enter("Application.Calculation");
    return host_.model().calculation;
}

void ScriptedApplication::SetCalculation(int mode) {
    host_.Enter("Application.SetCalculation");
    host_.model().calculation = mode;
}

korvane::Value ScriptedApplication::Evaluate(const std::u16string& expression) {
    host_.Enter("Application.Evaluate", expression);
    return host_.Evaluate(expression);
}

ObjectPtr ScriptedApplication::Selection() {
    host_.Enter("Application.Selection");
    if (host_.nothingOpen) return nullptr;
    if (!host_.selectedObject.empty()) {
        class Selected : public Object {
        public:
            explicit Selected(std::u16string type) : type_(std::move(type)) {}
            std::u16string TypeName() const override { return type_; }

        private:
            std::u16string type_;
        };
        return std::make_shared<Selected>(host_.selectedObject);
    }
    const Model& model = host_.model();
    return host_.RangeAt({model.activeBook, model.activeSheet, host_.selection});
}

host::RangePtr ScriptedApplication::ActiveCell() {
    host_.Enter("Application.ActiveCell");
    if (host_.nothingOpen) throw Error(kErrorObjectMissing, u"There is no active cell");
    const Model& model = host_.model();
    return host_.RangeAt({model.activeBook, model.activeSheet, model.activeCell});
}

host::CommandBarsPtr ScriptedApplication::CommandBars() {
    host_.Enter("Application.CommandBars");
    return std::make_shared<ScriptedCommandBars>(host_);
}

host::WorkbookPtr ScriptedApplication::ThisWorkbook() {
    host_.Enter("Application.ThisWorkbook");
    return host_.AddinWorkbook();
}

void ScriptedApplication::OnKey(const std::u16string& key, const std::u16string& procedure) {
    host_.Enter("Application.OnKey", key);
    if (host_.refusedKeys.contains(key)) throw Error(kErrorApplication, u"The key cannot be bound");
    host_.keys[key] = procedure;
}

void ScriptedApplication::OnKey(const std::u16string& key) {
    host_.Enter("Application.OnKey", key);
    host_.keys.erase(key);
}

std::u16string ScriptedApplication::DecimalSeparator() {
    host_.Enter("Application.DecimalSeparator");
    return u".";
}

// The short date of the English (US) locale: "11/21/2026", "11/21/2026 1:10:30 PM".
std::u16string ScriptedApplication::DateText(double serial) {
    host_.Enter("Application.DateText");
    constexpr std::int64_t kDaySeconds = 86400;
    const auto seconds = static_cast<std::int64_t>(std::llround(serial * kDaySeconds));
    std::int64_t days = seconds / kDaySeconds;
    std::int64_t time = seconds % kDaySeconds;
    if (time < 0) time += kDaySeconds, --days;
    const CivilDate date = CivilDateOf(days);
    std::array<char, 64> buffer{};
    std::snprintf(buffer.data(), buffer.size(), "%u/%u/%lld", date.month, date.day,
                  static_cast<long long>(date.year));
    std::string text = buffer.data();
    if (time != 0) {
        const long hour = time / 3600;
        std::snprintf(buffer.data(), buffer.size(), " %ld:%02ld:%02ld %s",
                      hour % 12 == 0 ? 12 : hour % 12, static_cast<long>(time / 60 % 60),
                      static_cast<long>(time % 60), hour < 12 ? "AM" : "PM");
        text += buffer.data();
    }
    return ToUtf16(text);
}

host::SubscriptionPtr ScriptedApplication::Connect(host::ApplicationEvents& sink) {
    host_.Enter("Application.Connect");
    return std::make_unique<SinkSubscription>(host_, sink);
}

void ScriptedHost::RaiseWindowActivate() {
    if (!enableEvents) return;
    const auto sinks = applicationSinks;  // sinks may let go while one is called
    for (auto* sink : sinks) {
        if (!applicationSinks.contains(sink)) continue;
        sink->WindowActivate(std::make_shared<ScriptedWorkbook>(*this, model_.activeBook));
    }
}

}  // namespace korvane::scripted

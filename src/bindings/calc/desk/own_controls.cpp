#include "bindings/calc/desk/own_controls.h"

#include <algorithm>

#include "base/attempt.h"
#include "bindings/calc/desk/spreadsheet_module.h"
#include "bindings/calc/errors.h"
#include "bindings/calc/main_thread.h"
#include "host/constants.h"

namespace korvane::calc {

namespace css = com::sun::star;
using css::uno::UNO_QUERY_THROW;

namespace {

constexpr const char16_t* kMenuBar = u"private:resource/menubar/menubar";
constexpr const char16_t* kStandardToolbar = u"private:resource/toolbar/standardbar";

[[noreturn]] void ThrowGone() {
    throw Error(kErrorObjectGone, u"The menu or button is no longer there");
}

}  // namespace

EntriesPlace EntriesPlace::Below(const std::u16string& url) const {
    EntriesPlace below = *this;
    below.menus.push_back(url);
    return below;
}

OwnControls::OwnControls(const Context& context, std::shared_ptr<CommandTable> commands)
    : context_(context),
      manager_(SpreadsheetModule(context)),
      commands_(std::move(commands)),
      labels_(context),
      pictures_(context, manager_),
      bars_{BarSettings(manager_, kMenuBar), BarSettings(manager_, kStandardToolbar)} {
    ClearLeftovers();
}

OwnControls::~OwnControls() { Close(); }

void OwnControls::Close() noexcept {
    if (!open_) return;
    while (!controls_.empty()) {
        const OwnControlPtr last = controls_.back();
        if (!Suppressed([&] { Delete(*last); })) Forget(last->place, last->url);
    }
    Suppressed([this] { Write(); });
    open_ = false;
}

// Only a user who stores bars of his own while the add-in's entries are in them
// brings these into the profile. What is stored there stands for nothing.
void OwnControls::ClearLeftovers() {
    for (BarSettings& bar : bars_) {
        if (!HasLeftovers(bar.Read())) continue;
        RemoveLeftovers(bar.Change());
        inProfile_ = true;
    }
    if (inProfile_) Write();
}

void OwnControls::RequireOpen() const {
    if (!open_) ThrowGone();
}

OwnControlPtr OwnControls::Find(const std::u16string& url) const {
    const auto found = std::find_if(controls_.begin(), controls_.end(),
                                    [&](const auto& control) { return control->url == url; });
    return found == controls_.end() ? nullptr : *found;
}

EntriesPtr OwnControls::Read(const EntriesPlace& place) {
    RequireOpen();
    const EntriesPtr entries = Reached(Settings(place.bar).Read(), place.menus);
    if (!entries.is()) ThrowGone();
    return entries;
}

ChangingEntriesPtr OwnControls::Change(const EntriesPlace& place) {
    RequireOpen();
    const EntriesPtr entries = Reached(Reading(Settings(place.bar).Change()), place.menus);
    if (!entries.is()) ThrowGone();
    WriteSoon();
    return {entries, UNO_QUERY_THROW};
}

ChangingEntriesPtr OwnControls::NewSubmenu(Bar bar) { return Settings(bar).NewSubmenu(); }

// One write for all the changes that are made in one go.
void OwnControls::WriteSoon() {
    if (writesSoon_) return;
    MainThread(context_).Post([weak = weak_from_this()] {
        if (const auto controls = weak.lock()) controls->Write();
    });
    writesSoon_ = true;
}

void OwnControls::Write() {
    writesSoon_ = false;
    // Nobody but the user's own doing stores the bars.
    if (unsaved_ && !manager_->isModified()) inProfile_ = true;
    for (BarSettings& bar : bars_) {
        if (bar.Write()) unsaved_ = true;
    }
    if (!inProfile_ || !controls_.empty()) return;
    inProfile_ = unsaved_ = false;
    manager_->store();
}

void OwnControls::Add(const OwnControlPtr& control, sal_Int32 index) {
    EntryData entry{control->url, {}};
    const auto entries = Change(control->place);
    if (control->type == host::msoControlPopup) {
        entry.entries = Reading(NewSubmenu(control->place.bar));
    }
    controls_.push_back(control);
    try {
        InsertEntry(entries, index, entry);
    } catch (...) {
        controls_.pop_back();
        throw;
    }
}

void OwnControls::Delete(const OwnControl& control) {
    const auto entries = Change(control.place);
    const sal_Int32 index = FindUrl(Reading(entries), control.url);
    if (index < 0) ThrowGone();
    entries->removeByIndex(index);
    if (control.separated && index > 0 && IsSeparator(Reading(entries), index - 1)) {
        entries->removeByIndex(index - 1);
    }
    Forget(control.place, control.url);
}

void OwnControls::SetSeparated(OwnControl& control, bool separated) {
    if (separated == control.separated) return;
    const auto entries = Change(control.place);
    const sal_Int32 index = FindUrl(Reading(entries), control.url);
    if (index < 0) ThrowGone();
    const bool after = index > 0 && IsSeparator(Reading(entries), index - 1);
    if (separated && index > 0 && !after) {
        InsertSeparator(entries, index);
        control.separated = true;
    } else if (!separated) {
        if (after) entries->removeByIndex(index - 1);
        control.separated = false;
    }
}

// Neither it nor anything below it runs anything any more.
void OwnControls::Forget(const EntriesPlace& place, const std::u16string& url) {
    const EntriesPlace below = place.Below(url);
    const auto isBelow = [&](const EntriesPlace& other) {
        return other.bar == below.bar && other.menus.size() >= below.menus.size() &&
               std::equal(below.menus.begin(), below.menus.end(), other.menus.begin());
    };
    const auto gone = std::stable_partition(
        controls_.begin(), controls_.end(), [&](const OwnControlPtr& control) {
            return !isBelow(control->place) && !(control->place == place && control->url == url);
        });
    for (auto control = gone; control != controls_.end(); ++control) {
        commands_->Remove((*control)->url);
        Suppressed([&] { pictures_.Remove((*control)->url); });
    }
    controls_.erase(gone, controls_.end());
}

}  // namespace korvane::calc

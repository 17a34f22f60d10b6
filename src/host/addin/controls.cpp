#include "host/addin/controls.h"

#include <optional>
#include <string_view>
#include <vector>

#include "base/attempt.h"
#include "base/text.h"
#include "host/addin/commands.h"
#include "host/addin/entry_point.h"
#include "host/addin/shared_state.h"
#include "host/command_bars.h"
#include "host/constants.h"

namespace korvane::MControls {
namespace {

using host::CommandBarButton;
using host::CommandBarControlPtr;
using host::CommandBarControls;
using host::CommandBarControlsPtr;

constexpr const char16_t* kMenuBar = u"Worksheet Menu Bar";
constexpr const char16_t* kAuditingToolbar = u"Formula Auditing";
constexpr int kToolsMenu = 30007;
constexpr int kAuditingSubmenu = 30028;
constexpr const char16_t* kExploreCaption = u"Korvane E&xplorer";

// The first control that fits; null when there is none.
template <class Fits>
CommandBarControlPtr Find(CommandBarControls& controls, Fits fits) {
    const int count = controls.Count();
    for (int k = 1; k <= count; ++k) {
        auto control = controls.Item(k);
        if (fits(*control)) return control;
    }
    return nullptr;
}

CommandBarControlPtr FindId(CommandBarControls& controls, int id) {
    return Find(controls, [id](host::CommandBarControl& control) { return control.Id() == id; });
}

// Captions are compared without their access keys and whatever their case.
CommandBarControlPtr FindCaption(CommandBarControls& controls, std::u16string_view caption) {
    const std::u16string wanted = ReplaceAll(std::u16string(caption), u"&", u"");
    return Find(controls, [&wanted](host::CommandBarControl& control) {
        return EqualIgnoringCase(ReplaceAll(control.Caption(), u"&", u""), wanted);
    });
}

CommandBarControlsPtr Bar(SharedState& state, const char16_t* name) {
    return state.application->CommandBars()->Item(name)->Controls();
}

// The host's own Tools menu. Raises when the user has none.
CommandBarControlsPtr ToolsMenu(SharedState& state) {
    const auto menu = FindId(*Bar(state, kMenuBar), kToolsMenu);
    if (!menu) throw Error(kErrorObjectMissing, u"The host has no Tools menu");
    return menu->Controls();
}

// Null when the user has removed it.
CommandBarControlsPtr AuditingSubmenu(SharedState& state) {
    const auto submenu = FindId(*ToolsMenu(state), kAuditingSubmenu);
    return submenu ? submenu->Controls() : nullptr;
}

void DeleteExplorer(CommandBarControls& controls) {
    if (const auto earlier = FindCaption(controls, kExploreCaption)) earlier->Delete();
}

// Adds controls, and takes them away again unless all are kept.
class Builder {
public:
    explicit Builder(SharedState& state) : state_(state) {}
    Builder(const Builder&) = delete;
    Builder& operator=(const Builder&) = delete;
    ~Builder() {
        for (auto control = added_.rbegin(); control != added_.rend(); ++control) {
            Succeeds([&] { (*control)->Delete(); });
        }
    }
    void Keep() { added_.clear(); }

    CommandBarControlsPtr AddSubmenu(CommandBarControls& menu) {
        CommandBarControls::NewControl popup;
        popup.type = host::msoControlPopup;
        const auto submenu = Add(menu, popup);
        submenu->SetCaption(kExploreCaption);
        submenu->SetBeginGroup(true);
        return submenu->Controls();
    }
    CommandBarControlPtr AddButton(CommandBarControls& menu, const char16_t* caption,
                                   const char16_t* command, std::optional<int> before = {}) {
        CommandBarControls::NewControl custom;
        custom.type = host::msoControlButton;
        custom.parameter = command;
        custom.before = before;
        auto button = Add(menu, custom);
        button->SetCaption(caption);
        button->SetTag(kButtonTag);
        return button;
    }
    void AddExploreButton(CommandBarControls& bar, std::optional<int> before) {
        const auto control = AddButton(bar, kExploreCaption, kExploreCommand, before);
        control->SetBeginGroup(true);
        const auto button = std::dynamic_pointer_cast<CommandBarButton>(control);
        if (!button) throw Error(kErrorObjectMissing, u"The host added no button");
        platform::Resources& resources = state_.platform.resources;
        button->SetPicture(resources.Picture(u"IMGEXPLORE"));
        button->SetMask(resources.Picture(u"MSKEXPLORE"));
        button->SetStyle(host::msoButtonIcon);
    }

private:
    CommandBarControlPtr Add(CommandBarControls& bar,
                             const CommandBarControls::NewControl& control) {
        auto added = bar.Add(control);
        added_.push_back(added);
        return added;
    }

    SharedState& state_;
    std::vector<CommandBarControlPtr> added_;
};

void BuildSubmenu(SharedState& state, Builder& builder) {
    const auto tools = ToolsMenu(state);
    DeleteExplorer(*tools);
    const auto submenu = builder.AddSubmenu(*tools);
    builder.AddButton(*submenu, u"&Settings...", kOptionsCommand);
    builder.AddButton(*submenu, u"&Documentation", kDocumentationCommand);
    builder.AddButton(*submenu, u"&About...", kAboutCommand);
}

void BuildExploreButtons(SharedState& state, Builder& builder) {
    const auto toolbar = Bar(state, kAuditingToolbar);
    DeleteExplorer(*toolbar);
    builder.AddExploreButton(*toolbar, {});
    if (const auto submenu = AuditingSubmenu(state)) {
        DeleteExplorer(*submenu);
        // Before the last entry, which opens the toolbar. An empty submenu has
        // no place before anything.
        const int count = submenu->Count();
        builder.AddExploreButton(*submenu, count > 0 ? std::optional(count) : std::nullopt);
    }
}

// A host with a ribbon has bars too, but they are not for us.
bool HasNoBars(const SharedState& state) {
    return !state.application || state.hostHasRibbon || !state.application->CommandBars();
}

// Hears the clicks of what is there now: the button that was held may be gone.
void BindClicks(SharedState& state) {
    if (state.controlEvents) state.controlEvents->Bind();
}

void DeleteExploreButtons(SharedState& state) {
    Succeeds([&state] {
        if (!HasNoBars(state)) DeleteExplorer(*Bar(state, kAuditingToolbar));
    });
    Succeeds([&state] {
        const auto submenu = HasNoBars(state) ? nullptr : AuditingSubmenu(state);
        if (submenu) DeleteExplorer(*submenu);
    });
}

}  // namespace

bool bBuildCommandBars(SharedState& state) {
    return Guarded(state.errors, u"MControls", u"bBuildCommandBars", [&state] {
        if (HasNoBars(state)) return;
        Builder builder(state);
        BuildSubmenu(state, builder);
        if (state.options->bShowIcon()) BuildExploreButtons(state, builder);
        BindClicks(state);
        builder.Keep();
    });
}

void RemoveToolbarButtons(SharedState& state) {
    DeleteExploreButtons(state);
    Succeeds([&state] {
        if (!HasNoBars(state)) BindClicks(state);
    });
}

void RemoveAll(SharedState& state) {
    DeleteExploreButtons(state);
    Succeeds([&state] {
        if (!HasNoBars(state)) DeleteExplorer(*ToolsMenu(state));
    });
}

}  // namespace korvane::MControls

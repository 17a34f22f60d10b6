// What the add-in's menu entries and buttons share, whoever holds handles of them.
#pragma once

#include <array>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "bindings/calc/desk/bar_settings.h"
#include "bindings/calc/desk/button_pictures.h"
#include "bindings/calc/desk/command_labels.h"
#include "bindings/calc/desk/command_table.h"
#include "host/command_bars.h"

namespace korvane::calc {

enum class Bar { kMenu, kToolbar };

// Where entries are: a bar and the submenus (their URLs) from there on.
struct EntriesPlace {
    Bar bar = Bar::kMenu;
    std::vector<std::u16string> menus;

    // The entries of the submenu `url` of this place.
    EntriesPlace Below(const std::u16string& url) const;
    bool operator==(const EntriesPlace&) const = default;
};

// A control that the add-in has added. The office knows nothing of a tag or of a
// parameter, so they are kept here.
struct OwnControl {
    EntriesPlace place;
    std::u16string url;  // unlike any other entry's
    int type = 0;
    std::u16string tag;
    std::u16string parameter;
    std::string mask;
    bool separated = false;                                   // the separator before it is its own
    std::multiset<host::CommandBarButtonEvents*> sinks = {};  // one for each subscription
};
using OwnControlPtr = std::shared_ptr<OwnControl>;

// The bars and what is on them of the add-in's. Members throw the office's own
// exceptions, and korvane::Error after Close.
class OwnControls : public std::enable_shared_from_this<OwnControls> {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;

    // Clears the bars of what an earlier run may have left.
    OwnControls(const Context& context, std::shared_ptr<CommandTable> commands);
    // Takes everything away that is left.
    ~OwnControls();
    OwnControls(const OwnControls&) = delete;
    OwnControls& operator=(const OwnControls&) = delete;
    void Close() noexcept;

    CommandTable& commands() { return *commands_; }
    CommandLabels& labels() { return labels_; }
    ButtonPictures& pictures() { return pictures_; }
    const std::vector<OwnControlPtr>& all() const { return controls_; }
    // The control with this URL; null when it is none of the add-in's.
    OwnControlPtr Find(const std::u16string& url) const;

    // The entries of a place, for reading and for changing; throw korvane::Error
    // when it is no longer there. Changes are written soon, and at once by Write.
    EntriesPtr Read(const EntriesPlace& place);
    ChangingEntriesPtr Change(const EntriesPlace& place);
    ChangingEntriesPtr NewSubmenu(Bar bar);
    void Write();

    void Add(const OwnControlPtr& control, sal_Int32 index);
    // With everything below it. Throws korvane::Error when it is gone already.
    void Delete(const OwnControl& control);
    void SetSeparated(OwnControl& control, bool separated);

private:
    BarSettings& Settings(Bar bar) { return bars_[static_cast<std::size_t>(bar)]; }
    void RequireOpen() const;
    void ClearLeftovers();
    void WriteSoon();
    void Forget(const EntriesPlace& place, const std::u16string& url);

    Context context_;
    BarSettings::Manager manager_;
    std::shared_ptr<CommandTable> commands_;
    CommandLabels labels_;
    ButtonPictures pictures_;
    std::array<BarSettings, 2> bars_;
    std::vector<OwnControlPtr> controls_;  // as they were added
    bool open_ = true;
    bool writesSoon_ = false;
    bool unsaved_ = false;    // the office holds bars that differ from the profile's
    bool inProfile_ = false;  // the user has stored the bars with our entries in them
};

}  // namespace korvane::calc

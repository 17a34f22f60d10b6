// Handles of the host's objects. A handle shares the object with the host; the
// object goes when the last handle does. Two handles of one cell need not be
// equal: compare addresses, not handles.
#pragma once

#include <memory>

namespace korvane::host {

class Application;
class Workbook;
class Worksheet;
class Range;
class Interior;
class Names;
class Name;
class CommandBars;
class CommandBar;
class CommandBarControls;
class CommandBarControl;
class CommandBarButton;
class IRibbonUI;
class IRibbonControl;

using ApplicationPtr = std::shared_ptr<Application>;
using WorkbookPtr = std::shared_ptr<Workbook>;
using WorksheetPtr = std::shared_ptr<Worksheet>;
using RangePtr = std::shared_ptr<Range>;
using InteriorPtr = std::shared_ptr<Interior>;
using NamesPtr = std::shared_ptr<Names>;
using NamePtr = std::shared_ptr<Name>;
using CommandBarsPtr = std::shared_ptr<CommandBars>;
using CommandBarPtr = std::shared_ptr<CommandBar>;
using CommandBarControlsPtr = std::shared_ptr<CommandBarControls>;
using CommandBarControlPtr = std::shared_ptr<CommandBarControl>;
using CommandBarButtonPtr = std::shared_ptr<CommandBarButton>;
using IRibbonUIPtr = std::shared_ptr<IRibbonUI>;
using IRibbonControlPtr = std::shared_ptr<IRibbonControl>;

// A live subscription to a host object's events. Letting go of it ends the
// subscription; the sink may then die, and no event reaches it any more.
class Subscription {
public:
    Subscription() = default;
    Subscription(const Subscription&) = delete;
    Subscription& operator=(const Subscription&) = delete;
    virtual ~Subscription() = default;
};
using SubscriptionPtr = std::unique_ptr<Subscription>;

}  // namespace korvane::host

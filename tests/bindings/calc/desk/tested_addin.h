// The part of an add-in that its menus, buttons and keys make, by orders.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "bindings/calc/desk/calc_command_bars.h"
#include "bindings/calc/desk/command_table.h"
#include "bindings/calc/desk/shortcut_keys.h"
#include "host/application.h"
#include "host/command_bars.h"
#include "tint_orders.h"

namespace korvane::calc::testing {

class TestedAddin : public host::CommandBarButtonEvents, public host::ApplicationEvents {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;

    explicit TestedAddin(const Context& context);

    std::shared_ptr<CommandTable> commands() { return commands_; }
    // Carries an order out ("word argument"); a failure is "error: ...".
    std::string Do(const std::string& line) noexcept;

    void Click(const host::CommandBarButtonPtr& control, bool& cancelDefault) override;
    void WindowActivate(const host::WorkbookPtr& workbook) override;

private:
    std::string Carry(const std::string& order, const std::string& argument);
    void Open();
    void Build();
    void Try(const std::string& what);
    std::string Entries(host::CommandBarControls& controls, int depth);
    std::string DescribeBars();
    std::string DescribeKeys();

    Context context_;
    std::shared_ptr<CommandTable> commands_ = std::make_shared<CommandTable>();
    std::unique_ptr<CalcCommandBars> bars_;
    std::unique_ptr<ShortcutKeys> keys_;
    std::vector<host::CommandBarControlPtr> added_;
    host::SubscriptionPtr clicks_;
    host::SubscriptionPtr windows_;
    std::string log_;
    TintOrders tints_{context_};
};

}  // namespace korvane::calc::testing

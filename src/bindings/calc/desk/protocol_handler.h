// How the office comes from a command URL to the add-in's command table.
#pragma once

#include <com/sun/star/frame/XDispatchProvider.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>
#include <memory>

#include "bindings/calc/desk/command_table.h"

namespace korvane::calc {

inline constexpr const char16_t* kProtocolHandlerName = u"org.korvane.office.Commands";

// The table of the add-in that runs, or null while none does.
using CommandTableSource = std::function<std::shared_ptr<CommandTable>()>;

// A protocol handler for the URLs "org.korvane.addin:*", as the office makes one
// for each frame. A command runs on the main thread soon after dispatch() has
// returned: whoever waits for that call, a remote caller above all, does not wait
// for the user too. Where there is no table, or none any more, nothing runs.
com::sun::star::uno::Reference<com::sun::star::frame::XDispatchProvider> MakeProtocolHandler(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    CommandTableSource source);

// Where the table is kept: the UNO object that is the component's singleton
// implements this beside its UNO interfaces. The office makes handlers by itself
// and hands them nothing but the context, so that is where they look.
class CommandTableHolder {
public:
    virtual ~CommandTableHolder() = default;
    virtual std::shared_ptr<CommandTable> commands() = 0;
};
inline constexpr const char16_t* kAddinSingleton = u"/singletons/org.korvane.office.Addin";

// The table that the singleton holds at the time of asking; null without one.
CommandTableSource TableOfSingleton(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

// The office's configuration of the handler: the content of the file
// org/openoffice/Office/ProtocolHandler.xcu.
inline constexpr const char* kProtocolHandlerConfiguration =
    R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:component-data xmlns:oor="http://openoffice.org/2001/registry"
    xmlns:xs="http://www.w3.org/2001/XMLSchema" oor:name="ProtocolHandler"
    oor:package="org.openoffice.Office">
  <node oor:name="HandlerSet">
    <node oor:name="org.korvane.office.Commands" oor:op="replace">
      <prop oor:name="Protocols"><value>org.korvane.addin:*</value></prop>
    </node>
  </node>
</oor:component-data>
)";

}  // namespace korvane::calc

// The application's events, from the windows of the office.
#pragma once

#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>

#include "host/application.h"

namespace korvane::calc {

// The workbook of a document; null for one that is no workbook of the host's.
using WorkbookOf = std::function<host::WorkbookPtr(
    const com::sun::star::uno::Reference<com::sun::star::frame::XModel>&)>;

// Raises WindowActivate on `sink` whenever a workbook's window gets the focus,
// until the subscription is let go; `sink` must outlive it. Throws korvane::Error
// when the office cannot be listened to.
host::SubscriptionPtr ConnectWindowEvents(
    const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context,
    host::ApplicationEvents& sink, WorkbookOf workbookOf);

}  // namespace korvane::calc

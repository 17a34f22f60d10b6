// What a test has done to tinted cells in an office with windows, by orders.
#pragma once

#include <com/sun/star/uno/XComponentContext.hpp>
#include <map>
#include <memory>
#include <string>

#include "base/value.h"
#include "bindings/calc/desk/open_documents.h"
#include "bindings/calc/desk/tint_guard.h"
#include "host/range.h"

namespace korvane::calc::testing {

class TintOrders {
public:
    using Context = com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>;

    explicit TintOrders(const Context& context) : context_(context) {}

    // "what?" for an order that there is none of.
    std::string Carry(const std::string& order, const std::string& argument);

private:
    OpenDocument& Active();
    host::RangePtr Cells(const std::string& reference);
    std::string Tint(const std::string& reference);
    std::string Look(const std::string& reference);
    void Store(const std::string& how, const std::string& path);
    void Dispatch(const std::string& command);
    void Print(const std::string& path);

    Context context_;
    std::unique_ptr<OpenDocuments> documents_;
    std::unique_ptr<TintGuard> guard_;
    std::map<std::string, Value> saved_;
};

}  // namespace korvane::calc::testing

// The office's main thread, as other threads reach it.
#pragma once

#include <com/sun/star/awt/XRequestCallback.hpp>
#include <com/sun/star/uno/XComponentContext.hpp>
#include <functional>

namespace korvane::calc {

class MainThread {
public:
    // Throws the office's exceptions when it has none.
    explicit MainThread(
        const com::sun::star::uno::Reference<com::sun::star::uno::XComponentContext>& context);

    // Has `run` called soon on the main thread, also while a dialog of the office
    // is open. May be called on any thread. What it throws is lost.
    void Post(std::function<void()> run) const;

private:
    com::sun::star::uno::Reference<com::sun::star::awt::XRequestCallback> callbacks_;
};

}  // namespace korvane::calc

// The view of this program, at the end of its connection.
#pragma once

#include "apps/view/connection.h"
#include "bindings/qt/qt_view.h"
#include "bindings/resources/built_in_pictures.h"

namespace korvane::view {

class ShownWindows {
public:
    // Introduces itself at once. The connection outlives it; takes its onMessage.
    explicit ShownWindows(Connection& connection);
    ShownWindows(const ShownWindows&) = delete;
    ShownWindows& operator=(const ShownWindows&) = delete;
    ~ShownWindows();

private:
    void Take(const platform::ToView& message);

    Connection& connection_;
    resources::BuiltInPictures pictures_;
    qt::QtView view_;
};

}  // namespace korvane::view

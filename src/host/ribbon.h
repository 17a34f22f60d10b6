// The ribbon of hosts whose version is 12 or more.
#pragma once

#include <string>

#include "base/value.h"
#include "host/handles.h"

namespace korvane::host {

// Handed over by the ribbon's load callback and kept for the add-in's life.
class IRibbonUI : public Object {
public:
    std::u16string TypeName() const override { return u"IRibbonUI"; }
    // Makes the host ask the control's callbacks again.
    virtual void InvalidateControl(const std::u16string& id) = 0;
};

// The ribbon control that raised a callback.
class IRibbonControl : public Object {
public:
    std::u16string TypeName() const override { return u"IRibbonControl"; }
    // The identifier in the ribbon's description, such as "kvx2Explore".
    virtual std::u16string Id() = 0;
};

}  // namespace korvane::host

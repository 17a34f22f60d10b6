// A host whose every call is counted, and fails where a test wants it to: the calls
// of a scripted host are, whatever stands behind this one.
#pragma once

#include <memory>

#include "bindings/scripted/accesses.h"
#include "host/application.h"
#include "host/workbook.h"

namespace korvane::test {

class WatchedHost {
public:
    // A call that is to fail does not reach the host.
    explicit WatchedHost(std::shared_ptr<scripted::Accesses> accesses);

    // The same objects, watched, and watched all that is reached through them.
    host::ApplicationPtr Watch(host::ApplicationPtr application) const;
    host::WorkbookPtr Watch(host::WorkbookPtr workbook) const;
    // Watched handles that are still held somewhere, subscriptions among them.
    int LiveHandles() const { return *liveHandles_; }

private:
    std::shared_ptr<scripted::Accesses> accesses_;
    std::shared_ptr<int> liveHandles_;
};

}  // namespace korvane::test

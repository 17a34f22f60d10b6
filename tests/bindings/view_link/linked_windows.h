// A whole system of windows behind a link, as a program makes it.
#pragma once

#include <gtest/gtest.h>
#include <poll.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "bindings/view_link/linked_message_boxes.h"
#include "bindings/view_link/near_view.h"
#include "bindings/view_link/pump.h"
#include "bindings/view_link/view_link.h"
#include "platform/window/test_windows.h"

namespace korvane::view_link::test {

using korvane::test::EveryControl;

struct LinkedWindows {
    explicit LinkedWindows(const LinkLimits& limits, std::vector<std::string> command = {})
        : link(std::move(command), limits) {
        link.onLost = [this](Loss loss) { losses.push_back(loss); };
        form->Show();
    }

    // A view in this process; it has introduced itself.
    std::unique_ptr<NearView> AttachNear(bool introduced = true) {
        int ends[2] = {-1, -1};
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends), 0);
        auto view = std::make_unique<NearView>(Socket(ends[1]));
        link.Adopt(ends[0]);
        if (introduced) {
            view->Introduce();
            Turn(view.get());
        }
        return view;
    }
    // Both ends take what the other has sent.
    void Turn(NearView* view = nullptr) {
        for (int k = 0; k < 3; ++k) {
            do {
                link.OnReady();
            } while (link.HasView() && link.NextTimeout() == Clock::duration::zero());
            if (view) view->Read();
        }
    }
    // Pumps until `done`; false when that takes too long.
    bool PumpUntil(const std::function<bool()>& done,
                   std::chrono::milliseconds atMost = std::chrono::seconds(20)) {
        const auto end = Clock::now() + atMost;
        while (!done() && Clock::now() < end) {
            link.Flush();
            pollfd ready{link.fd(), link.events(), 0};
            ::poll(&ready, 1, 1);
            link.OnReady();
        }
        return done();
    }
    template <class T>
    T& Get(const char16_t* name) {
        return form->Get<T>(name);
    }
    platform::ControlId IdOf(const char16_t* name) { return Get<platform::Control>(name).Id(); }
    void ExpectSame(const platform::WindowsMirror& mirror) {
        ASSERT_EQ(mirror.forms().size(), windows.forms().size());
        for (const auto& [id, one] : windows.forms()) {
            ASSERT_TRUE(mirror.forms().at(id) == one->State()) << "window " << id;
        }
    }

    ViewLink link;
    Pump pump{link};
    platform::Windows windows{pump};
    ShownWindows shown{link, windows};
    LinkedMessageBoxes boxes{link, windows};
    std::unique_ptr<platform::Form> form = windows.Load(EveryControl());
    std::vector<Loss> losses;
};

}  // namespace korvane::view_link::test

// A test before an office with the component of this folder in it.
#pragma once

#include <memory>
#include <string>

#include "desk_office.h"
#include "support/desktop_fixture.h"

namespace korvane::test {

class DeskOfficeTest : public DesktopTest {
protected:
    void SetUp() override {
        DesktopTest::SetUp();
        if (desktop_) Start();
    }
    void EndPrograms() override { office_.reset(); }
    // Starts the office, in place of one that may run.
    virtual void Start() {
        office_.reset();
        office_ = std::make_unique<DeskOffice>(*desktop_, folder_);
        ASSERT_TRUE(office_->ready());
    }
    std::string Ask(const std::string& order) { return office_->Ask(order); }

    std::unique_ptr<DeskOffice> office_;
};

}  // namespace korvane::test

// Two open workbooks for tests of the navigation.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "base/text.h"
#include "bindings/scripted/scripted_host.h"
#include "support/exploring.h"

namespace korvane::test {

class TwoWorkbooks : public testing::Test {
protected:
    TwoWorkbooks()
        : host_(HostOf(R"({"workbooks":[
              {"name":"B.xls","sheets":[{"name":"S"},{"name":"My Sheet"}]},
              {"name":"C.xls","sheets":[{"name":"T"}]}]})")),
          application_(host_->Application()) {}
    ~TwoWorkbooks() override {
        application_.reset();
        EXPECT_EQ(host_->LiveHandles(), 0);
    }

    host::RangePtr Range(const char16_t* reference) {
        return host_->RangeAt(host_->FindCells(reference).value());
    }
    // Where the user stands: the active cell, with its workbook and sheet.
    std::string Here() { return ToUtf8(application_->ActiveCell()->Address(host::kExternal)); }

    std::unique_ptr<scripted::ScriptedHost> host_;
    host::ApplicationPtr application_;
};

}  // namespace korvane::test

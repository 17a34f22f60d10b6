// The error handler over a scripted host and platform.
#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>
#include <vector>

#include "base/text.h"
#include "bindings/scripted/scripted_platform.h"
#include "host/addin/entry_point.h"
#include "support/exploring.h"

namespace korvane::test {

class WithErrorHandler : public testing::Test {
protected:
    WithErrorHandler()
        : host_(HostWith("=1")),
          platform_(host_->sharedAccesses()),
          application_(host_->Application()),
          handler_(platform_.files, platform_.messageBoxes, platform_.clock, {2, 1, 5},
                   application_, folder_) {
        platform_.clock.now = {2026, 11, 16, 1, 10, 30};
        host_->thisWorkbookName = u"KorvaneExplorer.xla";
    }

    // The log's lines.
    std::vector<std::string> Log(const char16_t* path = u"C:\\Add-ins\\Error.log") {
        std::vector<std::string> lines;
        for (const auto& line : platform_.files.lines[path]) lines.push_back(ToUtf8(line));
        return lines;
    }
    // The texts of the boxes that were shown.
    std::vector<std::string> Boxes() const {
        std::vector<std::string> texts;
        for (const auto& message : platform_.messageBoxes.shown) {
            texts.push_back(ToUtf8(message.text));
        }
        return texts;
    }

    std::unique_ptr<scripted::ScriptedHost> host_;
    scripted::ScriptedPlatform platform_;
    host::ApplicationPtr application_;
    std::u16string folder_ = u"C:\\Add-ins\\";
    MErrorHandler handler_;
};

// What every entry of the log begins with here, up to the location.
inline const std::string kFront = "11/16/26 01:10:30  E11.0A2.1.5  [KorvaneExplorer.xla]";

using Texts = std::vector<std::string>;

}  // namespace korvane::test

#include "apps/command/replay_command.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>

#include "apps/command/recorded_session.h"
#include "apps/command/scripted_document.h"
#include "apps/window/session.h"
#include "apps/window/user_view.h"
#include "bindings/scripted/load_document.h"
#include "explorer/explorer_design.h"

namespace korvane::command {
namespace {

using window::test::UserView;
namespace names = explorer_controls;
namespace fs = std::filesystem;

const char* const kDocument = R"json({"workbooks":[{"name":"B.xls","sheets":[{"name":"S","cells":{
    "A1":{"formula":"=B1+C1","value":5},"B1":{"formula":"=C1-1","value":2},"C1":3}}]}],
    "literals":true})json";

class ReplayTest : public testing::Test {
protected:
    ReplayTest() {
        std::string pattern = (fs::temp_directory_path() / "replay-XXXXXX").string();
        folder_ = mkdtemp(pattern.data());
    }
    ~ReplayTest() override {
        std::error_code ignored;
        fs::remove_all(folder_, ignored);
    }
    // A session as a user has it, recorded.
    std::string Record() {
        UserView view([](UserView& user) {
            ASSERT_TRUE(user.WaitForWindows(1));
            const auto first = user.newest();
            ASSERT_TRUE(user.WaitUntil(
                [&] { return user.Control(first, names::kTree).nodes().size() == 3; }));
            user.Do(platform::FormActivated{first});
            user.Do(first, names::kTree, platform::NodeSelected{0, 0, 2});
            user.Do(first, names::kFormula, platform::TextSelected{0, 0, {5, 0}});
            user.Do(platform::FormPlaced{first, {100, 200, 9000, 7000}});
            user.Do(first, names::kTree, platform::NodeSelected{0, 0, 2});
            user.Do(first, names::kTree, platform::KeyDown{0, 0, 'Q', platform::kCtrl});
            ASSERT_TRUE(user.WaitForWindows(2));
            user.Do(platform::CloseAsked{user.newest(), true});
            ASSERT_TRUE(user.WaitForWindows(1));
            user.Do(platform::CloseAsked{first, true});
        });
        const auto json = nlohmann::json::parse(kDocument);
        ScriptedDocument document(scripted::LoadDocument(json));
        document.host().version = u"12.0";
        document.host().hwnd = 0;
        document.host().thisWorkbookName = u"korvane";
        window::SessionSettings settings;
        settings.folders = {folder_ / "config", folder_ / "state"};
        std::string session = RecordingStart(json, {});
        const window::SessionRecording recording{
            {kMetricsNote, kSettingNote, kAnswerNote},
            [&](const std::string& frames) { session += frames; }};
        view_link::ViewLink link({});
        link.Adopt(view.TakeCoreEnd());
        window::ShowExplorer(link, document.host().Application(), document.host().AddinWorkbook(),
                             settings, &recording);
        return session;
    }
    int Replay(const std::string& bytes) {
        const std::string path = (folder_ / "bug.session").string();
        std::ofstream(path, std::ios::binary) << bytes;
        testing::internal::CaptureStdout();
        const int code = RunReplay(path);
        said_ = testing::internal::GetCapturedStdout();
        return code;
    }

    fs::path folder_;
    std::string said_;
};

TEST_F(ReplayTest, ASessionIsTheSameAgain) {
    const std::string session = Record();
    EXPECT_EQ(Replay(session), kSame) << said_;
    EXPECT_NE(said_.find("the same, "), std::string::npos) << said_;
    EXPECT_EQ(said_.find(" 0 events"), std::string::npos) << said_;
}

TEST_F(ReplayTest, AnotherValueIsTheFirstDifference) {
    std::string session = Record();
    // The document of the recording has another value than what was recorded.
    auto read = ReadSession(session);
    ASSERT_TRUE(read);
    read->head["document"]["workbooks"][0]["sheets"][0]["cells"]["B1"]["value"] = 7;
    std::string other = RecordingStart(read->head["document"], {});
    platform::Recorder rest;
    for (const auto& frame : read->frames) rest.Note(frame.kind, frame.bytes);
    other += rest.recording();
    EXPECT_EQ(Replay(other), kDiffers);
    EXPECT_NE(said_.find("after event 0:\n  recorded: row added in window 1, trvTree: node 2 "
                         "\"B1\" | S | 2\n  now: row added in window 1, trvTree: node 2 "
                         "\"B1\" | S | 7"),
              std::string::npos)
        << said_;
}

TEST_F(ReplayTest, AMissingEventIsADifference) {
    auto read = ReadSession(Record());
    ASSERT_TRUE(read);
    platform::Recorder rest;
    int events = 0;
    for (const auto& frame : read->frames) {
        if (frame.kind == 'e' && ++events == 2) continue;
        rest.Note(frame.kind, frame.bytes);
    }
    EXPECT_EQ(Replay(RecordingStart(read->head["document"], {}) + rest.recording()), kDiffers);
    EXPECT_NE(said_.find("after event 1"), std::string::npos) << said_;
}

TEST_F(ReplayTest, WhatIsNoWholeRecordingIsUnreadable) {
    std::string session = Record();
    EXPECT_EQ(Replay(session.substr(0, session.size() - 1)), kUnreadable);
    EXPECT_EQ(Replay(""), kUnreadable);
    EXPECT_EQ(Replay("rubbish"), kUnreadable);
    EXPECT_EQ(Replay(RecordingStart("no document", {})), kUnreadable);
    EXPECT_EQ(RunReplay((folder_ / "nothing").string()), kUnreadable);
}

}  // namespace
}  // namespace korvane::command

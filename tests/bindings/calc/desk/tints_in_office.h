// Tinted cells in an office that its user works in.
#pragma once

#include <sys/wait.h>

#include <cstdlib>
#include <filesystem>
#include <string>

#include "desk_office_fixture.h"

namespace korvane::test {

// 0x00CCFF, the tint, as files spell it.
inline constexpr const char* kTintInFiles = "00ccff";
inline constexpr const char* kTinted = "52479 own";
inline constexpr const char* kPlain = "-1 default";

class CalcTints : public DeskOfficeTest {
protected:
    void Start() override {
        ASSERT_NO_FATAL_FAILURE(DeskOfficeTest::Start());
        ASSERT_EQ(Ask("guard " + Journals().string()), "done");
    }
    // A document of the user's with a file and one undo step.
    void Make(const std::string& file) {
        ASSERT_EQ(Ask("type A1 5"), "done");
        ASSERT_EQ(Ask("type A2 =A1+1"), "done");
        ASSERT_EQ(Ask("saveas " + Path(file)), "done");
        ASSERT_EQ(Ask("state"), "unmodified 2 1");
    }
    void Die() {
        EXPECT_EQ(Ask("die"), "lost");
        EXPECT_TRUE(WIFSIGNALED(office_->WaitForEnd()));
        Start();
    }
    std::string Path(const std::string& file) const { return (folder_ / file).string(); }
    std::filesystem::path Journals() const { return folder_ / "state"; }
    bool AreThereJournals() const {
        return std::filesystem::exists(Journals()) && !std::filesystem::is_empty(Journals());
    }
    // How often the tint is found in a file.
    int Tints(const std::string& file) const {
        const std::string path = Path(file);
        EXPECT_TRUE(std::filesystem::exists(path)) << path;
        const std::string text = path.ends_with(".fods")
                                     ? "cat " + path
                                     : "python3 -c \"import zipfile,sys\nz=zipfile.ZipFile('" +
                                           path +
                                           "')\nfor n in z.namelist(): "
                                           "sys.stdout.buffer.write(z.read(n)+b'\\n')\"";
        return std::atoi(OutputOf(text + " | grep -aic " + kTintInFiles).c_str());
    }
};

}  // namespace korvane::test

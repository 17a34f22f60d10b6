// A Calc whose user does anything, beside one without the add-in whose user makes the
// same edits.
#include "random_user.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iostream>

#include "addin_in_calc.h"
#include "painted_book.h"

namespace korvane::test {
namespace {

namespace fs = std::filesystem;

// Pasting over something asks nothing.
constexpr const char* kAskNothing = R"(<?xml version="1.0" encoding="UTF-8"?>
<oor:items xmlns:oor="http://openoffice.org/2001/registry" xmlns:xs="http://www.w3.org/2001/XMLSchema" xmlns:xsi="http://www.w3.org/2001/XMLSchema-instance">
<item oor:path="/org.openoffice.Office.Calc/Input"><prop oor:name="ReplaceCellsWarning" oor:op="fuse"><value>false</value></prop></item>
</oor:items>
)";

class RandomUserInCalc : public AddinInCalc {
protected:
    void MakeBooks() override {
        for (const fs::path& path : {book(), other()}) WritePaintedBook(path);
        for (const fs::path& folder : {folder_, folder_ / "shadow"}) {
            fs::create_directories(folder / "profile/user");
            std::ofstream(folder / "profile/user/registrymodifications.xcu") << kAskNothing;
        }
    }
    void EndPrograms() override {
        shadow_.reset();
        AddinInCalc::EndPrograms();
        shadows_.reset();
    }

    std::unique_ptr<Desktop> shadows_;
    std::unique_ptr<ShadowCalc> shadow_;
};

TEST_F(RandomUserInCalc, EndsWithWhatHeDidHimself) {
    const int actions = static_cast<int>(NumberIn("KORVANE_ACTIONS", 45));
    shadows_ = std::make_unique<Desktop>();
    shadow_ = std::make_unique<ShadowCalc>(*shadows_, folder_ / "shadow",
                                           std::vector<fs::path>{book(), other()});
    ASSERT_TRUE(shadow_->ready());
    ASSERT_EQ(calc_->Ask("open " + other().string()), "done");
    Chance chance;
    RandomUser user(*desktop_, *calc_, *shadow_, chance, folder_, {"loan.fods", "other.fods"});
    try {
        for (int done = 1; done <= actions; ++done) {
            user.Act();
            if (done % 30 == 0) user.Rest();
        }
        user.Rest();
    } catch (const RandomUser::Trouble& trouble) {
        ADD_FAILURE() << trouble.what() << "\n" << chance.Trace() << ", after\n" << user.Story();
    }
}

}  // namespace
}  // namespace korvane::test

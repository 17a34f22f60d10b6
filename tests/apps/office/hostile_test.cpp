// Workbooks that want to reach out.
// The office's process cannot reach out at all; that no formula even tries to is
// tested inside the office, where nothing stops it.
#include <gtest/gtest.h>

#include "apps/command/office_document.h"
#include "base/text.h"
#include "files_under_test.h"
#include "support/listener.h"

namespace korvane::command {
namespace {

using test::Listener;
using testing::TestFolder;
using testing::WorkbookWith;

TEST(HostileWorkbook, NothingIsFetchedAndNothingConnects) {
    const Listener listener;
    TestFolder folder;
    for (const std::string& formula :
         {"=LEN(COM.MICROSOFT.WEBSERVICE(&quot;" + listener.Url("a") + "&quot;))+1",
          "='" + listener.Url("b.ods") + "'#$Sheet1.A1+1",
          "=INDIRECT(&quot;'" + listener.Url("c.ods") + "'#$Sheet1.A1&quot;)+1",
          "=DDE(&quot;soffice&quot;;&quot;" + listener.Url("d.ods") +
              "&quot;;&quot;A1&quot;)&amp;&quot;x&quot;"}) {
        OfficeDocument document(folder.Write("hostile.fods", WorkbookWith(formula)));
        for (const bool precise : {false, true}) {
            EXPECT_TRUE(document.Explore(u"Data!A1", true, precise).ok) << formula;
        }
        EXPECT_FALSE(listener.WasCalled()) << formula;
    }
}

}  // namespace
}  // namespace korvane::command

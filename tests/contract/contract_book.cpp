#include "contract/contract_book.h"

#include "bindings/calc/flat_file.h"

namespace korvane::test {

using calc::testing::FlatText;
using calc::testing::TestSheet;

std::string ContractBook() {
    TestSheet data{"Data",
                   {{1, 1, "1"},
                    {1, 2, "10"},
                    {1, 3, "=SUM([.A1:.A3])*[.B1]"},
                    {2, 1, "2"},
                    {2, 2, "20"},
                    {2, 3, "=1/0"},
                    {3, 1, "3"},
                    {3, 2, "30"},
                    {3, 3, "=NA()"},
                    {4, 1, "text"},
                    {4, 2, "TRUE"},
                    {4, 3, "{=SUM([.A1:.A3]*[.B1:.B3])}"},
                    {5, 3, "{=[.A1:.A2]*2}", {}, 2, 1}}};
    data.hiddenRows = {8};
    data.hiddenColumns = {8};
    return FlatText({data,
                     {"My Sheet", {{1, 1, "5"}, {2, 1, "6"}}},
                     {"Locked", {{1, 1, "7"}, {1, 2, "=[.A1]*2"}}, true}},
                    {{"Rate", "[$'My Sheet'.$A$2]"},
                     {"Block", "[$Data.$A$1:.$B$3]"},
                     {"Twice", "[$Data.$B$2]*2"},
                     {"Own", "[$Data.$B$2]", "Data"}});
}

}  // namespace korvane::test

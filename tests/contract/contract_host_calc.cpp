// The contract's workbook in Calc, inside the office process.
#include "contract/contract_book.h"
#include "contract/host_contract.h"
#include "workbook.h"

namespace korvane::test {
namespace {

using calc::testing::OpenBook;

class CalcContractHost : public ContractHost {
public:
    CalcContractHost() : book_(kContractFile, ContractBook()) {}

    host::Application& application() override { return book_.application(); }
    host::RangePtr Cells(const std::u16string& reference) override {
        return std::dynamic_pointer_cast<host::Range>(book_.Evaluate(u"=" + reference).AsObject());
    }
    void CloseBook() override { book_.Close(); }

private:
    OpenBook book_;
};

}  // namespace

std::unique_ptr<ContractHost> MakeContractHost() { return std::make_unique<CalcContractHost>(); }

}  // namespace korvane::test

// What every host must keep to, whatever stands behind it. The cases run over
// the scripted host and over Calc, so that the one that tests rely on stays as
// honest as the one that users have.
#pragma once

#include <memory>
#include <string>

#include "host/application.h"
#include "host/range.h"

namespace korvane::test {

// A host that holds the contract's workbook "Contract.fods": in every host the
// same cells, names and formulas.
//   Data         A        B        C
//     1          1        10       =SUM(A1:A3)*B1     (60)
//     2          2        20       =1/0
//     3          3        30       =NA()
//     4          text     TRUE     {=SUM(A1:A3*B1:B3)} (140, a cell's array)
//     5          (empty)           {=A1:A2*2} in C5:C6 (a block's array)
//   My Sheet     A1 = 5, A2 = 6
//   Locked       A1 = 7, B1 =A1*2; protected
//   Hidden rows and columns of Data: row 8, column H.
//   Names: Rate ='My Sheet'!$A$2, Block =Data!$A$1:$B$3, Twice =Data!$B$2*2, and
//   Own =Data!$B$2 of the sheet Data.
class ContractHost {
public:
    ContractHost() = default;
    ContractHost(const ContractHost&) = delete;
    ContractHost& operator=(const ContractHost&) = delete;
    virtual ~ContractHost() = default;

    virtual host::Application& application() = 0;
    // The cells of a reference with a sheet, such as "Data!A1:B2".
    virtual host::RangePtr Cells(const std::u16string& reference) = 0;
    // Closes the workbook; handles stay and must fail from now on.
    virtual void CloseBook() = 0;
};

// Each program that runs the contract defines this one.
std::unique_ptr<ContractHost> MakeContractHost();

}  // namespace korvane::test

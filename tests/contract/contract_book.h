// The contract's workbook as a file that Calc opens.
#pragma once

#include <string>

namespace korvane::test {

inline constexpr const char* kContractFile = "Contract.fods";

// A flat ODF text.
std::string ContractBook();

}  // namespace korvane::test

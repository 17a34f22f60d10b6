// The contract's workbook in the scripted host.
#include "contract/host_contract.h"
#include "support/exploring.h"

namespace korvane::test {
namespace {

constexpr const char* kDocument = R"json({
  "addin": {"name": "KorvaneExplorer.xla", "path": "C:\\Add-ins"},
  "workbooks": [{
    "name": "Contract.fods",
    "names": {"Rate": "='My Sheet'!$A$2", "Block": "=Data!$A$1:$B$3", "Twice": "=Data!$B$2*2"},
    "sheets": [
      {"name": "Data", "names": {"Own": "=Data!$B$2"}, "hiddenRows": [8], "hiddenCols": ["H"],
       "cells": {
         "A1": 1, "A2": 2, "A3": 3, "A4": "text",
         "B1": 10, "B2": 20, "B3": 30, "B4": true,
         "C1": {"formula": "=SUM(A1:A3)*B1", "value": 60},
         "C2": {"formula": "=1/0", "value": {"error": 2007}},
         "C3": {"formula": "=NA()", "value": {"error": 2042}},
         "C4": {"formula": "=SUM(A1:A3*B1:B3)", "value": 140, "hasArray": true},
         "C5": {"formula": "=A1:A2*2", "value": 2, "hasArray": true, "currentArray": "C5:C6"},
         "C6": {"formula": "=A1:A2*2", "value": 4, "hasArray": true, "currentArray": "C5:C6"}}},
      {"name": "My Sheet", "cells": {"A1": 5, "A2": 6}},
      {"name": "Locked", "protected": true,
       "cells": {"A1": 7, "B1": {"formula": "=A1*2", "value": 14}}}]}],
  "evaluate": {
    "=INDEX(A1:B3,2,2)": {"range": "Data!B2"},
    "=OFFSET([Contract.fods]Data!$A$1,1,1,,)": {"range": "Data!B2"},
    "=INDIRECT(\"Data!B2\",1)": {"range": "Data!B2"},
    "=A1>0": {"value": true},
    "=SUM(A1:A3)": {"value": 6},
    "=Data!$B$2*2": {"value": 40},
    "=A1:A3*2": {"value": [[2], [4], [6]]},
    "=1/0": {"error": 2007},
    "=SUM(1,": {"error": 2015},
    "=A1+B2": {"value": 21}},
  "write": {"=SUM(1,": {"fail": true}},
  "literals": true})json";

class ScriptedContractHost : public ContractHost {
public:
    ScriptedContractHost() : host_(HostOf(kDocument)), application_(host_->Application()) {}

    host::Application& application() override { return *application_; }
    host::RangePtr Cells(const std::u16string& reference) override {
        return host_->RangeAt(scripted::FindPlace(host_->model(), reference).value());
    }
    void CloseBook() override { host_->CloseBook(u"Contract.fods"); }

private:
    std::unique_ptr<scripted::ScriptedHost> host_;
    host::ApplicationPtr application_;
};

}  // namespace

std::unique_ptr<ContractHost> MakeContractHost() {
    return std::make_unique<ScriptedContractHost>();
}

}  // namespace korvane::test

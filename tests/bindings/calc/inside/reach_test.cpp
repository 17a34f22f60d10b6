// Nothing that is evaluated tries to reach out. The office of these tests is not
// cut off from the network, and its document allows its links: only the binding
// stands between a formula and the listener.
#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include <com/sun/star/beans/PropertyValue.hpp>
#include <com/sun/star/frame/Desktop.hpp>
#include <com/sun/star/table/XCell.hpp>
#include <com/sun/star/util/XCloseable.hpp>
#include <memory>

#include "apps/report/exploration.h"
#include "base/error.h"
#include "base/text.h"
#include "bindings/calc/calc_application.h"
#include "bindings/calc/uno_text.h"
#include "inside_office.h"
#include "support/listener.h"
#include "workbook.h"

namespace korvane::calc::testing {
namespace {

namespace css = com::sun::star;
using css::uno::Reference;
using css::uno::UNO_QUERY_THROW;

// A document that has been made here, not opened: what it links to is trusted.
class NewBook {
public:
    NewBook() {
        css::beans::PropertyValue hidden;
        hidden.Name = ToOUString(u"Hidden");
        hidden.Value <<= true;
        model_.set(css::frame::Desktop::create(OfficeContext())
                       ->loadComponentFromURL(
                           ToOUString(u"private:factory/scalc"), ToOUString(u"_blank"), 0,
                           css::uno::Sequence<css::beans::PropertyValue>(&hidden, 1)),
                   UNO_QUERY_THROW);
        application_ = std::make_unique<CalcApplication>(OfficeContext(), model_);
        application_->FindCell(u"A1")->Select();
    }
    ~NewBook() { Reference<css::util::XCloseable>(model_, UNO_QUERY_THROW)->close(true); }
    NewBook(const NewBook&) = delete;
    NewBook& operator=(const NewBook&) = delete;

    CalcApplication& application() { return *application_; }
    // As a user types it, past the binding.
    void Type(const std::u16string& formula) {
        const auto cell = application_->document()->Sheet(0)->getCellByPosition(3, 0);
        cell->setFormula(ToOUString(formula));
        cell->getValue();
    }

private:
    Reference<css::frame::XModel> model_;
    std::unique_ptr<CalcApplication> application_;
};

TEST(Reach, WhatIsEvaluatedOrWrittenDoesNotTry) {
    const test::Listener listener;
    NewBook book;
    const std::u16string url = ToUtf16(listener.Url("a"));
    for (const std::u16string& text :
         {u"=WEBSERVICE(\"" + url + u"\")", u"=LEN(WEBSERVICE(\"" + url + u"\"))+1",
          u"=_xlfn.WEBSERVICE(\"" + url + u"\")", u"=IF(TRUE,WEBSERVICE(\"" + url + u"\"),1)",
          u"=FILTERXML(WEBSERVICE(\"" + url + u"\"),\"//a\")", std::u16string(u"=[a]Data!A1+1"),
          u"='[" + url + u"]Data'!A1"}) {
        const Value value = book.application().Evaluate(text);
        EXPECT_TRUE(Shown(value) == "#REF!" || Shown(value) == "#VALUE!" ||
                    Shown(value) == "#NAME?")
            << ToUtf8(text) << ": " << Shown(value);
        const auto cell = book.application().FindCell(u"A1");
        cell->Formula();
        EXPECT_THROW(cell->SetFormula(text), Error) << ToUtf8(text);
        EXPECT_FALSE(listener.HangUp(100)) << ToUtf8(text);
    }
}

TEST(Reach, AnOpenedWorkbookDoesNotTry) {
    const test::Listener listener;
    const std::vector<std::string> formulas = {
        "=LEN(COM.MICROSOFT.WEBSERVICE(\"" + listener.Url("a") + "\"))+1",
        "=['" + listener.Url("b.ods") + "'#$Sheet1.A1]+1",
        "=INDIRECT(\"'" + listener.Url("c.ods") + "'#$Sheet1.A1\")+1",
        "=DDE(\"soffice\";\"" + listener.Url("d.ods") + "\";\"A1\")&\"x\""};
    for (const auto& formula : formulas) {
        OpenBook book("reaching.fods", FlatText({{"Data", {{1, 1, formula}}}}));
        const auto cell = book.Cell(u"Data!A1");
        cell->Select();
        for (const bool precise : {false, true}) {
            EXPECT_TRUE(Explore(book.application(), cell, true, precise).ok) << formula;
        }
        EXPECT_FALSE(listener.HangUp(100)) << formula;
    }
}

TEST(Reach, TheListenerHearsAFormulaThatIsEvaluated) {
    auto listener = std::make_unique<test::Listener>();
    const std::u16string url = ToUtf16(listener->Url("a"));
    const pid_t answering = fork();
    if (answering == 0) _exit(listener->HangUp(20'000) ? 7 : 0);
    listener.reset();  // nobody shall wait for a second answer
    NewBook book;
    book.Type(u"=WEBSERVICE(\"" + url + u"\")");
    int status = 0;
    waitpid(answering, &status, 0);
    EXPECT_EQ(WEXITSTATUS(status), 7);
}

}  // namespace
}  // namespace korvane::calc::testing

// The scan takes the children of a call that leads to no cells over, instead of
// building them again at the level above. This test holds it against the same
// rules followed step by step: the call is built, removed, and its arguments are
// scanned again. That costs 2^depth, and is as simple as the rules themselves.
#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <optional>
#include <random>

#include "base/number.h"
#include "base/text.h"
#include "formula/error_text.h"
#include "host/name.h"
#include "host/workbook.h"
#include "host/worksheet.h"
#include "support/exploring.h"

namespace korvane {
namespace {

using Text = std::u16string;

// Texts as the rules count them: from 1, a wrong slice is a failure.
int Len(const Text& s) { return static_cast<int>(s.size()); }
Text Mid(const Text& s, int from, int count) {
    if (from < 1 || count < 0) throw Error(kErrorInvalidCall, u"slice");
    return from > Len(s)
               ? Text()
               : s.substr(static_cast<std::size_t>(from) - 1, static_cast<std::size_t>(count));
}
Text Mid(const Text& s, int from) { return Mid(s, from, std::max(0, Len(s) - from + 1)); }
bool In(const Text& ch, const Text& set) { return !ch.empty() && set.find(ch) != Text::npos; }

const Text kOperators = u"+-*^/<>=&,%";
const Text kDelimiters = kOperators + u"(){} \n";
const Text kQuotes = u"\"'";

int ClosingQuote(int lPos, const Text& s) {
    const Text quote = Mid(s, lPos, 1);
    for (int j = lPos + 1; j <= Len(s); ++j) {
        if (Mid(s, j, 1) != quote) continue;
        if (j < Len(s) - 1 && Mid(s, j + 1, 1) == quote) {
            ++j;
            continue;
        }
        return j;
    }
    throw Error(kErrorInvalidCall, u"quote");
}

int ClosingBracket(int lPos, const Text& s) {
    int depth = 0;
    for (int i = lPos; i <= Len(s); ++i) {
        const Text ch = Mid(s, i, 1);
        if (ch == u"(") ++depth;
        if (ch == u")" && --depth == 0) return i;
        if (In(ch, kQuotes)) i = ClosingQuote(i, s);
    }
    return Len(s);
}

bool Constant(const Text& s) { return Mid(s, 1, 1) == u"\"" || IsNumeric(s); }

bool NeedsParse(const Text& s) {
    if (bIsErrorText(s)) return false;
    for (int i = Mid(s, 1, 1) == u"=" ? 2 : 1; i <= Len(s); ++i) {
        const Text ch = Mid(s, i, 1);
        if (In(ch, kQuotes)) {
            i = ClosingQuote(i, s);
        } else if (In(ch, kOperators + u"(")) {
            return true;
        }
    }
    return false;
}

bool ReferenceFunction(const Text& token) {
    const auto colon = token.rfind(u':');
    const Text tail = (colon == Text::npos ? token : token.substr(colon + 1)) + u",";
    return ContainsIgnoringCase(u"OFFSET,INDEX,INDIRECT,", tail);
}

std::vector<Text> Split(const Text& s) {
    std::vector<Text> parts;
    int p = 1;
    int start = 1;
    while (p <= Len(s)) {
        const Text ch = Mid(s, p, 1);
        if (In(ch, kQuotes)) p = ClosingQuote(p, s);
        if (ch == u"(") p = ClosingBracket(p, s);
        if (ch == u",") {
            parts.push_back(Mid(s, start, p - start));
            start = p + 1;
        }
        ++p;
    }
    if (p > start) parts.push_back(Mid(s, start));
    return parts;
}

struct Part {
    Part* parent = nullptr;
    Text formula;
    Text function;
    Text calc;
    int pos = 0;
    int depth = 0;
    host::RangePtr range;
    std::vector<std::unique_ptr<Part>> subs;
};

class Literal {
public:
    Literal(host::Application& application, bool precise)
        : application_(application), cell_(application.ActiveCell()), precise_(precise) {}

    bool bMaybeImprecise = false;
    bool bContainsIndirect = false;

    std::unique_ptr<Part> Explore() {
        auto root = std::make_unique<Part>();
        root->range = cell_;
        root->formula = *cell_->Formula().Text();
        Parse(*root);
        return root;
    }

private:
    void Parse(Part& self) {
        const Text s = self.formula;
        int i = Len(self.function) + 1;
        int tokenStart = i;
        Text token;
        while (i <= Len(s)) {
            const Text ch = Mid(s, i, 1);
            if (token.empty()) tokenStart = i;
            if (ch == u"(" && !token.empty()) {
                if (!ReferenceFunction(token)) {
                    token.clear();
                    ++i;
                    continue;
                }
                const auto colon = token.rfind(u':');
                if (colon != Text::npos) {
                    const Text before = token.substr(0, colon);
                    if (!Constant(before)) AddSub(self, before, u"", tokenStart);
                    token = token.substr(colon + 1);
                    tokenStart += static_cast<int>(colon) + 1;
                }
                const int closing = ClosingBracket(i, s);
                const Text call = Mid(s, tokenStart, closing - tokenStart + 1);
                if (!Constant(call)) {
                    AddSub(self, call, token, tokenStart);
                    if (!self.subs.back()->range) {
                        self.subs.pop_back();
                        token.clear();
                        ++i;
                        continue;
                    }
                }
                i = closing + 1;
                token.clear();
                continue;
            }
            if (In(ch, kOperators) && !token.empty()) {
                if (Mid(token, 1, 1) == u"#" && ch == u"/") {
                    token += ch;
                } else {
                    if (!Constant(token)) AddSub(self, token, u"", tokenStart);
                    token.clear();
                }
                ++i;
            } else if (In(ch, kQuotes)) {
                const int closing = ClosingQuote(i, s);
                token += Mid(s, i, closing - i + 1);
                i = closing + 1;
            } else {
                if (!In(ch, kDelimiters) && !(ch == u":" && token.empty())) token += ch;
                ++i;
            }
            if (i > Len(s) && !token.empty() && !Constant(token))
                AddSub(self, token, u"", tokenStart);
        }
    }

    void AddSub(Part& self, const Text& formula, const Text& function, int pos) {
        auto sub = std::make_unique<Part>();
        sub->parent = &self;
        InitSub(*sub, formula, function, pos);
        self.subs.push_back(std::move(sub));
    }

    void InitSub(Part& self, const Text& formula, const Text& function, int pos) {
        self.depth = self.parent->depth + 1;
        if (self.depth > 400) throw Error(kErrorOutOfStack, u"depth");
        self.function = function;
        self.calc = Evaluate(formula, !function.empty());
        host::NamePtr name;
        if (function.empty()) name = FindName(formula);
        try {
            self.range = Resolve(name ? name->RefersTo() : formula);
        } catch (const Error&) {
            self.range = nullptr;
        }
        self.formula = formula;
        bool expanded = false;
        Text nameText;
        if (name) {
            nameText = name->Name_();
            const Text refersTo = name->RefersTo();
            expanded = ReplaceAll(refersTo, u"$", u"") != u"=" + ReplaceAll(formula, u"$", u"");
            if (expanded) self.formula = refersTo;
        }
        const bool within =
            std::any_of(expanding_.begin(), expanding_.end(),
                        [&](const Text& outer) { return EqualIgnoringCase(outer, nameText); });
        const bool plain = function.empty();
        const bool itself = plain && formula == self.parent->formula;
        if (!(name && within) && !itself && (!plain || NeedsParse(self.formula))) {
            if (expanded) expanding_.push_back(nameText);
            Parse(self);
            if (expanded) {
                expanding_.pop_back();
                DeletePosition(self);
            }
            if (!expanded && self.subs.size() == 1 && !EqualIgnoringCase(function, u"INDIRECT")) {
                const Text inner = function.empty() ? self.formula
                                                    : Mid(self.formula, Len(function) + 2,
                                                          Len(self.formula) - Len(function) - 2);
                Part& only = *self.subs.front();
                if (only.subs.empty() && only.formula == inner) {
                    self.range = only.range;
                    self.subs.clear();
                }
            }
        }
        if (name) self.function = nameText.substr(nameText.rfind(u'!') + 1);
        self.formula = formula;
        self.pos = pos;
    }

    void DeletePosition(Part& self) {
        self.pos = 0;
        for (auto& sub : self.subs) DeletePosition(*sub);
    }

    Text Evaluate(const Text& text, bool isFunction) {
        const Text expression = text.empty() || Mid(text, 1, 1) == u"=" ? text : u"=" + text;
        if (isFunction && precise_) {
            const Text kept = *cell_->Formula().Text();
            std::optional<Text> value;
            try {
                cell_->SetFormula(expression);
                value = sErrorText(cell_->Value(), application_);
            } catch (const Error&) {
            }
            try {
                cell_->SetFormula(kept);
            } catch (const Error&) {
            }
            bMaybeImprecise = !value;
            if (value) return *value;
        } else if (isFunction) {
            bMaybeImprecise = true;
        }
        return sErrorText(application_.Evaluate(expression), application_);
    }

    host::NamePtr FindName(const Text& text) {
        const auto sheet = cell_->Worksheet();
        auto name = sheet->Names()->Item(text);
        if (!name) name = sheet->Parent()->Names()->Item(text);
        return name;
    }

    bool IsCallOf(const Text& text, const Text& name) {
        const Text prefix = u"=" + name + u"(";
        return Mid(text, 1, Len(prefix)) == prefix &&
               ClosingBracket(Len(prefix), text) == Len(text);
    }

    host::RangePtr ToRange(const Text& text) {
        return std::dynamic_pointer_cast<host::Range>(application_.Evaluate(text).AsObject());
    }

    host::RangePtr Resolve(const Text& source) {
        const Text text = Mid(source, 1, 1) == u"=" ? source : u"=" + source;
        if (IsCallOf(text, u"INDIRECT")) {
            bContainsIndirect = true;
            const auto parts = Split(Mid(text, 11, Len(text) - 11));
            if (parts.empty()) return nullptr;
            const Text reference = Evaluate(parts[0], NeedsParse(parts[0]));
            bool a1 = true;
            if (parts.size() > 1 && !parts[1].empty()) {
                a1 = TextToBoolean(Evaluate(parts[1], NeedsParse(parts[1])));
            }
            return ToRange(u"=INDIRECT(\"" + reference + u"\"," + (a1 ? u"1" : u"0") + u")");
        }
        if (IsCallOf(text, u"OFFSET")) {
            const auto parts = Split(Mid(text, 9, Len(text) - 9));
            if (parts.empty()) return nullptr;
            Text moved;
            for (std::size_t k = 1; k <= 4; ++k) {
                moved += u",";
                if (k < parts.size() && !parts[k].empty()) {
                    moved += Evaluate(parts[k], NeedsParse(parts[k]));
                }
            }
            const auto base = Resolve(parts[0]);
            return base ? ToRange(u"=OFFSET(" + base->Address(host::kExternal) + moved + u")")
                        : nullptr;
        }
        return ToRange(text);
    }

    host::Application& application_;
    host::RangePtr cell_;
    bool precise_;
    std::vector<Text> expanding_;
};

std::string AddressOf(const host::RangePtr& range) {
    return range ? ToUtf8(range->Address(host::kExternal)) : "-";
}

void Write(const Part& part, int depth, std::string& out) {
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
    out += ToUtf8(part.formula) + " @" + std::to_string(part.pos) + " |" + ToUtf8(part.function) +
           "|" + ToUtf8(part.calc) + "|" + AddressOf(part.range) + "\n";
    for (const auto& sub : part.subs) Write(*sub, depth + 1, out);
}

void Write(const CElement& element, int depth, std::string& out) {
    out.append(static_cast<std::size_t>(depth) * 2, ' ');
    out += ToUtf8(element.sFormula()) + " @" + std::to_string(element.lPos()) + " |" +
           ToUtf8(element.sFunction()) + "|" + ToUtf8(element.sCalcValue()) + "|" +
           AddressOf(element.rngRange()) + "\n";
    for (const auto& sub : element.colSubs()) Write(*sub, depth + 1, out);
}

std::string FlagsText(bool imprecise, bool indirect) {
    return std::string(imprecise ? " imprecise" : "") + (indirect ? " indirect" : "");
}

std::string ByTheRules(scripted::ScriptedHost& host, bool precise) {
    const auto application = host.Application();
    Literal literal(*application, precise);
    try {
        const auto root = literal.Explore();
        std::string out;
        Write(*root, 0, out);
        return out + FlagsText(literal.bMaybeImprecise, literal.bContainsIndirect);
    } catch (const Error&) {
        return "failed";
    }
}

std::string ByTheScan(scripted::ScriptedHost& host, bool precise) {
    test::Exploration exploration(host, false, precise);
    if (!exploration.ok) return "failed";
    std::string out;
    Write(exploration.root(), 0, out);
    return out + FlagsText(exploration.options().bMaybeImprecise,
                           exploration.options().bContainsIndirect);
}

// Some calls lead to cells, some to cells only as a whole while their argument
// leads nowhere, most to nothing.
constexpr const char* kDocument = R"json({"workbooks":[{"name":"B.xls",
    "names":{"Nm":"=INDEX(A1)+B2","Ring":"=Gnir*2","Gnir":"=INDEX(Ring)","Cell":"=S!$B$2",
             "Far":"=OFFSET(A1,1+1,0)"},
    "sheets":[{"name":"S","names":{"Own":"=T(Nm A1)"},
               "cells":{"A1":{"formula":"=1","value":1},"B2":{"value":"A9"},"A2":3}}]}],
    "literals":true,
    "evaluate":{"=INDEX(A1)":{"range":"S!C3"},"=INDEX(Foo)":{"range":"S!C4"},
        "=T(Foo)":{"range":"S!C5"},
        "=INDEX(A1,5)":{"range":"S!C6"},"=INDIRECT(\"A9\",1)":{"range":"S!A9"},
        "=OFFSET([B.xls]S!$A$1,1,,,)":{"range":"S!A2"},"=SET(A1)":{"fail":true},
        "=INDEX(INDEX(A1))":{"range":"S!C7"},"=T(A1)":{"error":2042}},
    "write":{"=T(A1)":{"value":5},"=INDEX(Nm)":{"fail":true},"=INDEX(B1)":{"fail":true},
        "=1+1":{"value":2},"=T(Foo)":{"range":"S!B2"},"=INDEX(INDEX(A1))":{"fail":true}}})json";

void Compare(scripted::ScriptedHost& host, const std::string& formula) {
    scripted::Cell cell;
    cell.content.formula = ToUtf16(formula);
    cell.content.value = Value(1);
    for (const bool precise : {false, true}) {
        host.model().activeSheet->At(1, 1) = cell;
        const std::string expected = ByTheRules(host, precise);
        host.model().activeSheet->At(1, 1) = cell;
        ASSERT_EQ(ByTheScan(host, precise), expected) << formula << (precise ? " (precise)" : "");
    }
}

TEST(LiteralOrder, KnownTraps) {
    const auto host = test::HostOf(kDocument);
    for (const char* formula : {
             "=INDEX(INDEX(B1)) C1",  // the last token goes on two brackets further
             "=INDEX(INDEX(INDEX(B1 ) ) ) C1+D1",
             "=T(T(B1))(C1)",  // and becomes a function's name
             "=T(INDEX(B1)):C1",
             "=INDEX(B1):C1",
             "=INDEX(#N)/A",
             "=INDEX(T(#DIV))/0!",
             "=INDEX(T(5)) 6",
             "=INDEX(T(A1+5)) 6 7",
             "=INDEX(Foo)+1",  // leads to cells that its collapse takes away
             "=INDEX(INDEX(Foo))+T(Foo)",
             "=A1:(B1)",
             "=A1:(B1:(C1:(D1)))",
             "=B1:INDEX(C1:INDEX(D1))",
             "=INDEX (T (B1))",  // blanks before the bracket
             "=INDEX (T (B1)) C1",
             "=OFF SET(B1)",  // and within the name
             "=INDEX(A1",
             "=INDEX(T(B1",
             "=INDEX()",
             "=INDEX(",
             "=INDEX(Ring)+Nm+Own",
             "=T(Nm)",
             "=T(\"a)\"&B1)",
             "=T('x'!A1)",
             "=T(\"open)",
             "=SET(A1)",
             "=SUM(SET(A1))",
             "=INDIRECT(B2)+INDIRECT(T(B2))",
             "=OFFSET(A1,1)+OFFSET(T(A1),1)",
             "=INDEX(A1:B2,1)INDEX(C1)",
             "=INDEX(INDEX(A1))B1",
             "={INDEX({1,2;3})}",
             "=A1:T(T(INDEX(B1)Nm):'x'!A1 INDEX(5))",  // the flag is as if Nm had not been a part
         }) {
        Compare(*host, formula);
    }
}

// Formulas of a few tokens, drawn from those that matter.
std::string RandomFormula(std::mt19937& random, int longest) {
    static const char* const kTokens[] = {"INDEX(",
                                          "OFFSET(",
                                          "INDIRECT(",
                                          "T(",
                                          "SUM(",
                                          "(",
                                          ")",
                                          ")",
                                          ")",
                                          ")",
                                          "A1",
                                          "B1",
                                          "B2",
                                          "Foo",
                                          "Nm",
                                          "Ring",
                                          "Own",
                                          "Cell",
                                          "Far",
                                          "5",
                                          "1",
                                          ",",
                                          ",",
                                          "+",
                                          "/",
                                          " ",
                                          " ",
                                          ":",
                                          "#N",
                                          "#DIV",
                                          "\"a\"",
                                          "'x y'!",
                                          "\"",
                                          "INDEX",
                                          "T",
                                          "{",
                                          "}",
                                          ";",
                                          "\n",
                                          "=",
                                          "INDEX(A1)",
                                          "T(Foo)",
                                          "INDEX(INDEX(",
                                          "))",
                                          "SET(",
                                          "OFFSET(A1,1)",
                                          "\"\"",
                                          "%",
                                          "A1:",
                                          "$B$2"};
    std::uniform_int_distribution<std::size_t> token(0, std::size(kTokens) - 1);
    std::uniform_int_distribution<int> length(1, longest);
    std::string formula = "=";
    for (int k = length(random); k > 0; --k) formula += kTokens[token(random)];
    return formula;
}

// Balanced calls within calls, so that the deep ones are really met.
std::string RandomCall(std::mt19937& random, int depth) {
    static const char* const kNames[] = {"INDEX(", "OFFSET(", "INDIRECT(", "T(", "SET(",
                                         "SUM(",   "INDEX (", "A1:T(",     "(",  "C1:("};
    static const char* const kLeaves[] = {"A1",    "B1",   "Foo",  "Nm", "5",
                                          "\"a\"", "#N/A", "Ring", "",   "'x'!A1"};
    static const char* const kBetween[] = {",", "+", " ", ":", "", ")", "/", ", "};
    const auto pick = [&](const auto& list) {
        return std::string(
            list[std::uniform_int_distribution<std::size_t>(0, std::size(list) - 1)(random)]);
    };
    if (depth == 0) return pick(kLeaves);
    std::string out = pick(kNames) + RandomCall(random, depth - 1);
    if (random() % 2 == 0)
        out += pick(kBetween) + (random() % 3 == 0 ? RandomCall(random, depth - 1) : pick(kLeaves));
    out += random() % 12 == 0 ? "" : ")";
    if (random() % 2 == 0) out += pick(kBetween) + pick(kLeaves);
    return out;
}

class LiteralOrderRandom : public testing::TestWithParam<unsigned> {};

TEST_P(LiteralOrderRandom, TokensInAnyOrderGiveTheSameTree) {
    const auto host = test::HostOf(kDocument);
    std::mt19937 random(GetParam());
    for (int k = 0; k < 1500 && !HasFatalFailure(); ++k) Compare(*host, RandomFormula(random, 14));
}

TEST_P(LiteralOrderRandom, CallsWithinCallsGiveTheSameTree) {
    const auto host = test::HostOf(kDocument);
    std::mt19937 random(GetParam() + 1000);
    for (int k = 0; k < 400 && !HasFatalFailure(); ++k) {
        Compare(*host, "=" + RandomCall(random, 1 + static_cast<int>(random() % 4)));
    }
}

INSTANTIATE_TEST_SUITE_P(Seeds, LiteralOrderRandom, testing::Values(1U, 2U, 3U, 4U));

}  // namespace
}  // namespace korvane

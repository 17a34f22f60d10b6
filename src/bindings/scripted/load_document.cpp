#include "bindings/scripted/load_document.h"

#include <limits>
#include <nlohmann/json.hpp>

#include "base/text.h"

namespace korvane::scripted {
namespace {

using Json = nlohmann::json;

// Nested lists beyond two levels mean nothing; a document may still hold them.
constexpr int kDeepestList = 2;

[[noreturn]] void Fail(const std::string& where, const std::string& why) {
    throw DocumentError(where + ": " + why);
}

const Json& Expect(const Json& json, Json::value_t type, const std::string& where,
                   const char* what) {
    if (json.type() != type) Fail(where, std::string("must be ") + what);
    return json;
}
const Json& Object(const Json& json, const std::string& where) {
    return Expect(json, Json::value_t::object, where, "an object");
}
const Json& List(const Json& json, const std::string& where) {
    return Expect(json, Json::value_t::array, where, "a list");
}
std::u16string Text(const Json& json, const std::string& where) {
    return ToUtf16(
        Expect(json, Json::value_t::string, where, "a text").get_ref<const std::string&>());
}
bool Flag(const Json& json, const std::string& where) {
    return Expect(json, Json::value_t::boolean, where, "true or false").get<bool>();
}
int Whole(const Json& json, const std::string& where) {
    constexpr std::int64_t kMost = std::numeric_limits<int>::max();
    if (!json.is_number_integer() || json.get<double>() < -static_cast<double>(kMost) ||
        json.get<double>() > static_cast<double>(kMost)) {
        Fail(where, "must be a whole number");
    }
    return json.get<int>();
}

// Calls `read` with the member `key` of `object` when it has one.
template <typename Read>
void Member(const Json& object, const char* key, const std::string& where, Read read) {
    const auto found = object.find(key);
    if (found != object.end()) read(*found, where + "." + key);
}

// "3" as a row, "C" as a column.
std::int32_t Row(const Json& json, const std::string& where) {
    const int row = Whole(json, where);
    if (row < 1 || row > kSheetRows) Fail(where, "no such row");
    return row;
}
std::int32_t Column(const Json& json, const std::string& where) {
    const auto column = ParseColumn(Text(json, where));
    if (!column) Fail(where, "no such column");
    return *column;
}
Area AreaOf(const std::u16string& text, const std::string& where) {
    const auto area = ParseArea(text);
    if (!area) Fail(where, "\"" + ToUtf8(text) + "\" is no address");
    return *area;
}

Value ValueOf(const Json& json, const std::string& where, int depth = 0);

Value ArrayOf(const Json& json, const std::string& where, int depth) {
    if (depth >= kDeepestList) Fail(where, "a list holds values, or lists of them");
    Array array;
    const bool rows = !json.empty() && json.front().is_array();
    array.rows = rows ? json.size() : 1;
    array.columns = rows ? json.front().size() : json.size();
    for (const Json& item : json) {
        if (rows && (!item.is_array() || item.size() != array.columns)) {
            Fail(where, "the rows of a list must be lists of one length");
        }
        if (!rows) {
            array.cells.push_back(ValueOf(item, where, depth + 1));
            continue;
        }
        for (const Json& cell : item) array.cells.push_back(ValueOf(cell, where, depth + 1));
    }
    if (array.cells.empty()) Fail(where, "a list must not be empty");
    return Value(std::move(array));
}

Value ValueOf(const Json& json, const std::string& where, int depth) {
    switch (json.type()) {
        case Json::value_t::null: return {};
        case Json::value_t::boolean: return Value(json.get<bool>());
        case Json::value_t::number_integer:
        case Json::value_t::number_unsigned:
        case Json::value_t::number_float: return Value(json.get<double>());
        case Json::value_t::string: return Value(Text(json, where));
        case Json::value_t::array: return ArrayOf(json, where, depth);
        case Json::value_t::object:
            if (json.size() == 1 && json.contains("error")) {
                return Value(static_cast<ErrorCode>(Whole(json["error"], where + ".error")));
            }
            [[fallthrough]];
        default:
            Fail(where,
                 "must be a number, true or false, a text, null, {\"error\":code} or a list");
    }
}

Answer AnswerOf(const Json& json, const std::string& where) {
    Object(json, where);
    Answer answer;
    if (json.size() == 1) {
        if (const auto value = json.find("value"); value != json.end()) {
            answer.value = ValueOf(*value, where + ".value");
            return answer;
        }
        if (json.contains("error")) {
            answer.value = ValueOf(json, where);
            return answer;
        }
        if (const auto range = json.find("range"); range != json.end()) {
            answer.kind = Answer::Kind::kRange;
            answer.range = Text(*range, where + ".range");
            return answer;
        }
        if (json.contains("fail") && Flag(json["fail"], where + ".fail")) {
            answer.kind = Answer::Kind::kFail;
            return answer;
        }
    }
    Fail(where, R"(must be {"value":v}, {"error":code}, {"range":"S!B3"} or {"fail":true})");
}

void ReadHidden(const Json& json, const std::string& where, Cell& cell) {
    const std::u16string hidden = Text(json, where);
    cell.hiddenRow = hidden == u"row" || hidden == u"both";
    cell.hiddenColumn = hidden == u"column" || hidden == u"col" || hidden == u"both";
    if (!cell.hiddenRow && !cell.hiddenColumn && !hidden.empty()) {
        Fail(where, R"(must be "row", "column" or "both")");
    }
}

Cell CellOf(const Json& json, const std::string& where) {
    Cell cell;
    Content& content = cell.content;
    if (!json.is_object() || json.contains("error")) {
        content.value = ValueOf(json, where);
        return cell;
    }
    Member(json, "formula", where,
           [&](const Json& item, const std::string& at) { content.formula = Text(item, at); });
    Member(json, "value", where,
           [&](const Json& item, const std::string& at) { content.value = ValueOf(item, at); });
    Member(json, "text", where, [&](const Json& item, const std::string& at) {
        content.text = item.is_null() ? Value(Value::Null{}) : ValueOf(item, at);
    });
    Member(json, "hasArray", where,
           [&](const Json& item, const std::string& at) { content.hasArray = Flag(item, at); });
    Member(json, "currentArray", where, [&](const Json& item, const std::string& at) {
        content.currentArray = AreaOf(Text(item, at), at);
    });
    Member(json, "hidden", where,
           [&](const Json& item, const std::string& at) { ReadHidden(item, at, cell); });
    return cell;
}

void ReadNames(const Json& json, const std::string& where, DefinedNames& names) {
    for (const auto& [key, refersTo] : Object(json, where).items()) {
        DefinedName name;
        // A sheet's own name may be written with the sheet's prefix.
        name.name = AfterLast(ToUtf16(key), u'!');
        name.refersTo = Text(refersTo, where + "." + key);
        if (!StartsWith(name.refersTo, u"=")) name.refersTo.insert(0, u"=");
        names[Fold(name.name)] = std::move(name);
    }
}

std::unique_ptr<Sheet> SheetOf(const Json& json, const std::string& where) {
    auto sheet = std::make_unique<Sheet>();
    Object(json, where);
    sheet->name = u"Sheet1";
    Member(json, "name", where,
           [&](const Json& item, const std::string& at) { sheet->name = Text(item, at); });
    Member(json, "protected", where,
           [&](const Json& item, const std::string& at) { sheet->isProtected = Flag(item, at); });
    Member(json, "names", where,
           [&](const Json& item, const std::string& at) { ReadNames(item, at, sheet->names); });
    Member(json, "hiddenRows", where, [&](const Json& item, const std::string& at) {
        for (const Json& row : List(item, at)) sheet->hiddenRows.insert(Row(row, at));
    });
    Member(json, "hiddenCols", where, [&](const Json& item, const std::string& at) {
        for (const Json& column : List(item, at)) sheet->hiddenColumns.insert(Column(column, at));
    });
    Member(json, "cells", where, [&](const Json& item, const std::string& at) {
        for (const auto& [key, cell] : Object(item, at).items()) {
            const std::string cellAt = at + "." + key;
            const Area area = AreaOf(ToUtf16(key), cellAt);
            if (!area.IsCell()) Fail(cellAt, "is more than one cell");
            sheet->At(area.top, area.left) = CellOf(cell, cellAt);
        }
    });
    return sheet;
}

BookPtr BookOf(const Json& json, const std::string& where) {
    auto book = std::make_shared<Book>();
    Object(json, where);
    book->name = u"Book1";
    Member(json, "name", where,
           [&](const Json& item, const std::string& at) { book->name = Text(item, at); });
    Member(json, "names", where,
           [&](const Json& item, const std::string& at) { ReadNames(item, at, book->names); });
    Member(json, "sheets", where, [&](const Json& item, const std::string& at) {
        for (const Json& sheet : List(item, at)) {
            const std::string sheetAt = at + "[" + std::to_string(book->sheets.size()) + "]";
            book->sheets.push_back(SheetOf(sheet, sheetAt));
        }
    });
    if (book->sheets.empty()) Fail(where, "a workbook needs a sheet");
    return book;
}

void ReadActive(const Json& json, const std::string& where, Model& model) {
    Object(json, where);
    Member(json, "workbook", where, [&](const Json& item, const std::string& at) {
        model.activeBook = model.FindBook(Text(item, at));
        if (!model.activeBook) Fail(at, "no such workbook");
        model.activeSheet = model.activeBook->sheets.front().get();
    });
    Member(json, "sheet", where, [&](const Json& item, const std::string& at) {
        model.activeSheet = model.activeBook->FindSheet(Text(item, at));
        if (!model.activeSheet) Fail(at, "no such sheet");
    });
    Member(json, "cell", where, [&](const Json& item, const std::string& at) {
        model.activeCell = AreaOf(Text(item, at), at).FirstCell();
    });
}

void ReadAddin(const Json& json, const std::string& where, Model& model) {
    Object(json, where);
    Member(json, "name", where,
           [&](const Json& item, const std::string& at) { model.addinName = Text(item, at); });
    Member(json, "path", where,
           [&](const Json& item, const std::string& at) { model.addinPath = Text(item, at); });
}

void ReadAnswers(const Json& json, const std::string& where,
                 std::unordered_map<std::u16string, Answer>& answers) {
    for (const auto& [key, answer] : Object(json, where).items()) {
        answers[ToUtf16(key)] = AnswerOf(answer, where + "." + key);
    }
}

}  // namespace

Model LoadDocument(const Json& document) {
    const std::string where = "document";
    Object(document, where);
    Model model;
    Member(document, "workbooks", where, [&](const Json& item, const std::string& at) {
        for (const Json& book : List(item, at)) {
            const std::string bookAt = at + "[" + std::to_string(model.books.size()) + "]";
            model.books.push_back(BookOf(book, bookAt));
        }
    });
    if (model.books.empty()) Fail(where, "needs \"workbooks\", a list of at least one");
    model.activeBook = model.books.front();
    model.activeSheet = model.activeBook->sheets.front().get();
    Member(document, "active", where,
           [&](const Json& item, const std::string& at) { ReadActive(item, at, model); });
    Member(document, "evaluate", where,
           [&](const Json& item, const std::string& at) { ReadAnswers(item, at, model.evaluate); });
    Member(document, "write", where,
           [&](const Json& item, const std::string& at) { ReadAnswers(item, at, model.write); });
    Member(document, "addin", where,
           [&](const Json& item, const std::string& at) { ReadAddin(item, at, model); });
    Member(document, "literals", where,
           [&](const Json& item, const std::string& at) { model.literals = Flag(item, at); });
    Member(document, "calculation", where,
           [&](const Json& item, const std::string& at) { model.calculation = Whole(item, at); });
    Member(document, "screenUpdating", where,
           [&](const Json& item, const std::string& at) { model.screenUpdating = Flag(item, at); });
    Member(document, "bEveryFunction", where,
           [&](const Json& item, const std::string& at) { model.bEveryFunction = Flag(item, at); });
    Member(document, "bPreciseCalc", where,
           [&](const Json& item, const std::string& at) { model.bPreciseCalc = Flag(item, at); });
    return model;
}

std::vector<Json> SplitDocuments(const std::string& text) {
    Json json;
    try {
        json = Json::parse(text);
    } catch (const Json::exception& error) {
        // Behind the library's own number in brackets.
        const std::string what = error.what();
        const auto bracket = what.find("] ");
        throw DocumentError("not JSON: " +
                            (bracket == std::string::npos ? what : what.substr(bracket + 2)));
    }
    // Moved, never copied: a copy of lists within lists recurses as deep as they go.
    std::vector<Json> documents;
    if (json.is_object()) {
        documents.push_back(std::move(json));
        return documents;
    }
    if (json.is_array()) {
        for (Json& document : json) documents.push_back(std::move(document));
        return documents;
    }
    throw DocumentError("must be a document or a list of documents");
}

}  // namespace korvane::scripted

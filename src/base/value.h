// The values that cross the host boundary.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace korvane {

// Anything of the host that is held by a handle. Handles are shared pointers:
// the last one to go releases the host's object, at a place that one can see.
class Object {
public:
    Object() = default;
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object() = default;
    // The object model's name of the type: "Range", "Name", "ChartArea".
    virtual std::u16string TypeName() const = 0;
};
using ObjectPtr = std::shared_ptr<Object>;

// The host's error values, by their numbers.
enum class ErrorCode : int {
    kNull = 2000,
    kDiv0 = 2007,
    kValue = 2015,
    kRef = 2023,
    kName = 2029,
    kNum = 2036,
    kNA = 2042,
};

// The error's name as the host displays it ("#N/A"), "#ERROR!" for a number that
// is none of the above.
std::u16string ErrorName(ErrorCode code);

// Whether `text` is exactly one of the eight names that ErrorName gives.
bool IsErrorName(std::u16string_view text);

struct Array;

// One variant value of the host.
class Value {
public:
    struct Empty {};  // a cell without content
    struct Null {};   // no single answer (a block whose cells differ)
    struct Date {     // days since 30 December 1899, the time of day as a fraction
        double serial;
    };

    Value() = default;  // empty
    explicit Value(Null null) : held_(null) {}
    explicit Value(bool flag) : held_(flag) {}
    explicit Value(double number) : held_(number) {}
    explicit Value(int number) : held_(static_cast<double>(number)) {}
    explicit Value(Date date) : held_(date) {}
    explicit Value(std::u16string text) : held_(std::move(text)) {}
    explicit Value(const char16_t* text) : held_(std::u16string(text)) {}
    explicit Value(ErrorCode code) : held_(code) {}
    explicit Value(Array array);
    explicit Value(ObjectPtr object) : held_(std::move(object)) {}

    bool IsEmpty() const { return std::holds_alternative<Empty>(held_); }
    bool IsNull() const { return std::holds_alternative<Null>(held_); }

    // The content when the value is of that kind, else null. The pointer lives
    // as long as the value stays unchanged.
    const bool* Boolean() const { return std::get_if<bool>(&held_); }
    const double* Number() const { return std::get_if<double>(&held_); }
    const Date* AsDate() const { return std::get_if<Date>(&held_); }
    const std::u16string* Text() const { return std::get_if<std::u16string>(&held_); }
    std::u16string* Text() { return std::get_if<std::u16string>(&held_); }
    const ErrorCode* AsError() const { return std::get_if<ErrorCode>(&held_); }
    const Array* AsArray() const;
    // The object, or a null handle when the value is none.
    ObjectPtr AsObject() const;

private:
    std::variant<Empty, Null, bool, double, Date, std::u16string, ErrorCode,
                 std::shared_ptr<const Array>, ObjectPtr>
        held_;
};

// A two-dimensional array of values, row by row.
struct Array {
    std::size_t rows = 0;
    std::size_t columns = 0;
    std::vector<Value> cells;  // rows * columns of them

    // 1-based, as the host counts.
    const Value& At(std::size_t row, std::size_t column) const {
        return cells.at((row - 1) * columns + (column - 1));
    }
};

}  // namespace korvane

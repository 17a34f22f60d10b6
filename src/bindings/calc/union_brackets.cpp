#include "bindings/calc/union_brackets.h"

#include <algorithm>

namespace korvane::calc {
namespace {

class Writer {
public:
    explicit Writer(const OpCodes& codes) : codes_(codes) {}

    std::vector<Token> Write(const std::vector<Token>& tokens) {
        levels_.push_back({});
        for (const Token& token : tokens) Add(token);
        EndReference(false);
        return std::move(out_);
    }

private:
    // What stands within one pair of brackets.
    struct Level {
        std::size_t start = 0;      // its first token
        std::size_t reference = 0;  // the first token of what may be a union
        bool isUnion = false;
        bool isPlain = false;  // the brackets belong to no call
    };

    void Add(const Token& token) {
        const sal_Int32 code = token.OpCode;
        if (code == codes_.close && levels_.size() > 1) {
            EndReference(true);
            levels_.pop_back();
            out_.push_back(token);
            return;
        }
        const bool isPlain = !IsCallee();
        if (code == codes_.join) levels_.back().isUnion = true;
        const bool ends = code == codes_.separator || codes_.operators.count(code) != 0;
        if (ends) EndReference(false);
        out_.push_back(token);
        if (ends) levels_.back().reference = out_.size();
        if (code == codes_.open) levels_.push_back({out_.size(), out_.size(), false, isPlain});
    }

    // Whether a "(" would now begin a call's arguments.
    bool IsCallee() const {
        if (out_.empty()) return false;
        const sal_Int32 code = out_.back().OpCode;
        return code != codes_.open && code != codes_.separator && code != codes_.join &&
               code != codes_.range && code != codes_.intersection && code != codes_.spaces &&
               codes_.operators.count(code) == 0;
    }

    void EndReference(bool endsLevel) {
        Level& level = levels_.back();
        if (!level.isUnion) return;
        level.isUnion = false;
        if (level.isPlain && endsLevel && level.reference == level.start) return;
        out_.insert(out_.begin() + static_cast<std::ptrdiff_t>(level.reference),
                    Token(codes_.open, com::sun::star::uno::Any()));
        out_.emplace_back(codes_.close, com::sun::star::uno::Any());
    }

    const OpCodes& codes_;
    std::vector<Level> levels_;
    std::vector<Token> out_;
};

}  // namespace

std::vector<Token> WithUnionBrackets(std::vector<Token> tokens, const OpCodes& codes) {
    const bool hasUnion = std::any_of(tokens.begin(), tokens.end(), [&](const Token& token) {
        return token.OpCode == codes.join;
    });
    return hasUnion ? Writer(codes).Write(tokens) : std::move(tokens);
}

}  // namespace korvane::calc

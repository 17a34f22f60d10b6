// What is done around commands of a window's.
#pragma once

#include <com/sun/star/frame/XFrame.hpp>
#include <com/sun/star/frame/XModel.hpp>
#include <com/sun/star/uno/Reference.hxx>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace korvane::calc {

// Whether `asked` is the command, with arguments behind it or without.
bool IsCommand(const std::u16string& asked, const std::u16string& command);

struct CommandBrackets {
    using Model = com::sun::star::uno::Reference<com::sun::star::frame::XModel>;
    std::vector<std::u16string> commands;  // ".uno:Copy"
    // Called with the window's document. Neither may throw.
    std::function<void(const Model& model, const std::u16string& command)> before;
    std::function<void(const Model& model, const std::u16string& command)> after;
};

// Brackets the commands of a window while it lives.
class BracketedFrame {
public:
    using Frame = com::sun::star::uno::Reference<com::sun::star::frame::XFrame>;

    // Throws the office's exceptions.
    BracketedFrame(const Frame& frame, std::shared_ptr<const CommandBrackets> brackets);
    ~BracketedFrame();
    BracketedFrame(const BracketedFrame&) = delete;
    BracketedFrame& operator=(const BracketedFrame&) = delete;

    bool IsFor(const Frame& frame) const;
    // The window is gone.
    bool IsOver() const;

private:
    class Interceptor;
    struct Parts;
    std::unique_ptr<Parts> parts_;
};

}  // namespace korvane::calc

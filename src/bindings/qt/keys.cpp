#include "bindings/qt/keys.h"

#include <array>
#include <string_view>

#include "platform/window/event.h"

namespace korvane::qt {
namespace {

struct KeyEntry {
    int key;
    std::int32_t code;
};

constexpr std::array<KeyEntry, 48> kKeys{{
    {Qt::Key_Backspace, 8},      {Qt::Key_Tab, 9},           {Qt::Key_Backtab, 9},
    {Qt::Key_Clear, 12},         {Qt::Key_Return, 13},       {Qt::Key_Enter, 13},
    {Qt::Key_Shift, 16},         {Qt::Key_Control, 17},      {Qt::Key_Alt, 18},
    {Qt::Key_AltGr, 18},         {Qt::Key_Pause, 19},        {Qt::Key_CapsLock, 20},
    {Qt::Key_Escape, 27},        {Qt::Key_Space, 32},        {Qt::Key_PageUp, 33},
    {Qt::Key_PageDown, 34},      {Qt::Key_End, 35},          {Qt::Key_Home, 36},
    {Qt::Key_Left, 37},          {Qt::Key_Up, 38},           {Qt::Key_Right, 39},
    {Qt::Key_Down, 40},          {Qt::Key_Print, 44},        {Qt::Key_Insert, 45},
    {Qt::Key_Delete, 46},        {Qt::Key_Super_L, 91},      {Qt::Key_Super_R, 92},
    {Qt::Key_Menu, 93},          {Qt::Key_NumLock, 144},     {Qt::Key_ScrollLock, 145},
    {Qt::Key_Semicolon, 186},    {Qt::Key_Colon, 186},       {Qt::Key_Equal, 187},
    {Qt::Key_Plus, 187},         {Qt::Key_Comma, 188},       {Qt::Key_Less, 188},
    {Qt::Key_Minus, 189},        {Qt::Key_Underscore, 189},  {Qt::Key_Period, 190},
    {Qt::Key_Greater, 190},      {Qt::Key_Slash, 191},       {Qt::Key_Question, 191},
    {Qt::Key_QuoteLeft, 192},    {Qt::Key_BracketLeft, 219}, {Qt::Key_Backslash, 220},
    {Qt::Key_BracketRight, 221}, {Qt::Key_Apostrophe, 222},  {Qt::Key_QuoteDbl, 222},
}};

// The keys of the number block have codes of their own; 0 for others.
std::int32_t KeypadCode(int key) {
    if (key >= Qt::Key_0 && key <= Qt::Key_9) return 96 + (key - Qt::Key_0);
    switch (key) {
        case Qt::Key_Asterisk: return 106;
        case Qt::Key_Plus: return 107;
        case Qt::Key_Minus: return 109;
        case Qt::Key_Period:
        case Qt::Key_Comma: return 110;
        case Qt::Key_Slash: return 111;
        default: return 0;
    }
}

// The Latin letter that stands at the place of a key, on window systems that
// number keys as the kernel does (with 8 added); 0 for no letter.
std::int32_t LetterAt(quint32 scanCode) {
    constexpr std::u16string_view kRows[] = {u"QWERTYUIOP", u"ASDFGHJKL", u"ZXCVBNM"};
    constexpr quint32 kFirst[] = {24, 38, 52};
    for (std::size_t row = 0; row < 3; ++row) {
        if (scanCode >= kFirst[row] && scanCode < kFirst[row] + kRows[row].size()) {
            return kRows[row][scanCode - kFirst[row]];
        }
    }
    return 0;
}

}  // namespace

std::int32_t KeyCode(const QKeyEvent& event) {
    const int key = event.key();
    if (event.modifiers() & Qt::KeypadModifier) {
        if (const std::int32_t code = KeypadCode(key)) return code;
    }
    const bool isLetter = key >= Qt::Key_A && key <= Qt::Key_Z;
    const bool isDigit = key >= Qt::Key_0 && key <= Qt::Key_9;
    if (isLetter || isDigit) return key;
    if (key >= Qt::Key_F1 && key <= Qt::Key_F24) return 112 + (key - Qt::Key_F1);
    for (const KeyEntry& entry : kKeys) {
        if (entry.key == key) return entry.code;
    }
    // A letter of another script.
    if (key > 0x7F && key < Qt::Key_Escape) return LetterAt(event.nativeScanCode());
    return 0;
}

std::int32_t ShiftState(Qt::KeyboardModifiers modifiers) {
    return (modifiers & Qt::ShiftModifier ? platform::kShift : 0) |
           (modifiers & Qt::ControlModifier ? platform::kCtrl : 0) |
           (modifiers & Qt::AltModifier ? platform::kAlt : 0);
}

}  // namespace korvane::qt
